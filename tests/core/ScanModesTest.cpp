#include "ScanModes.h"

#include "CaptureDesk.h"
#include "Settings.h"
#include "TestImage.h"
#include "mirvakcamera.h"

#include <QStringList>

#include <gtest/gtest.h>

namespace {

class FakeDesk : public CaptureDesk
{
public:
    bool mayCapture() override { return allowed; }
    FrameHandle takeFrame(std::chrono::seconds) override
    {
        return ownImage(camera, frameComes ? makeImageHandle(8, 8) : nullptr);
    }
    QString saveFrame(void*, int colourMode) override
    {
        colourModes << colourMode;
        return QStringLiteral("/tmp/x.jpg");
    }
    void addThumbnail(const QString& path) override { thumbnails << path; }
    void showNotice(const QString& text) override { notices << text; }

    MirvakCamera camera;
    bool allowed = true;
    bool frameComes = true;
    QList<int> colourModes;
    QStringList thumbnails;
    QStringList notices;
};

TEST(ScanModesTest, TheColourModeComesFromTheSettingsOrTheCommand)
{
    FakeDesk desk;
    ScanModes modes(desk);
    ConfigSettings store;
    settings::scanType.write(store, 2);
    modes.scan();
    modes.scanDocument();
    store.GetSettings()->clear();
    EXPECT_EQ(desk.colourModes, (QList<int>{2, 5}));
    EXPECT_EQ(desk.thumbnails.size(), 2);
    EXPECT_TRUE(desk.notices.isEmpty());
}

TEST(ScanModesTest, WithoutLeaveOrFrameNothingIsSaved)
{
    FakeDesk desk;
    ScanModes modes(desk);
    desk.frameComes = false;
    modes.scan();
    EXPECT_EQ(desk.notices.size(), 1);
    desk.allowed = false;
    modes.scan();
    modes.scanDocument();
    EXPECT_EQ(desk.notices.size(), 1);
    EXPECT_TRUE(desk.colourModes.isEmpty());
    EXPECT_TRUE(desk.thumbnails.isEmpty());
}

} // namespace
