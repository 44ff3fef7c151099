#include "ScanModes.h"

#include "FakeDesk.h"
#include "FreshSettings.h"
#include "Settings.h"

namespace {

class ScanModesTest : public FreshSettings
{
protected:
    FakeDesk desk;
    ScanModes modes{desk, desk.camera};
    const QStringList pages{QStringLiteral("/tmp/x.jpg"), QStringLiteral("/tmp/y.jpg")};
};

TEST_F(ScanModesTest, TheColourModeComesFromTheSettingsOrTheCommandAndEveryPageIsListed)
{
    desk.savesAs = pages;
    settings::scanType.write(settings, 2);
    modes.scan();
    modes.scanDocument();
    EXPECT_EQ(desk.colourModes, (QList<int>{2, 5}));
    EXPECT_EQ(desk.thumbnails, pages);
    EXPECT_TRUE(desk.notices.isEmpty());

    desk.thumbnails.clear();
    desk.pagesInShot = 3; // and the last one cannot be saved
    desk.savesAs = pages;
    modes.scan();
    EXPECT_EQ(desk.thumbnails, pages);
    EXPECT_EQ(desk.framesTaken, 3);
}

TEST_F(ScanModesTest, WithoutLeaveOrFrameNothingIsSaved)
{
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
