#include "ScanModes.h"

#include "FakeDesk.h"
#include "Settings.h"

#include <gtest/gtest.h>

namespace {

TEST(ScanModesTest, TheColourModeComesFromTheSettingsOrTheCommand)
{
    FakeDesk desk;
    desk.savesAs = QStringList{QStringLiteral("/tmp/x.jpg"), QStringLiteral("/tmp/y.jpg")};
    ScanModes modes(desk, desk.camera);
    ConfigSettings store;
    settings::scanType.write(store, 2);
    modes.scan();
    modes.scanDocument();
    store.GetSettings()->clear();
    EXPECT_EQ(desk.colourModes, (QList<int>{2, 5}));
    EXPECT_EQ(desk.thumbnails, (QStringList{QStringLiteral("/tmp/x.jpg"), QStringLiteral("/tmp/y.jpg")}));
    EXPECT_TRUE(desk.notices.isEmpty());
}

TEST(ScanModesTest, EveryPageOfOneShotIsListed)
{
    FakeDesk desk;
    desk.pagesInShot = 3; // and the last one cannot be saved
    desk.savesAs = QStringList{QStringLiteral("/tmp/x.jpg"), QStringLiteral("/tmp/y.jpg")};
    const QStringList saved = desk.savesAs;
    ScanModes(desk, desk.camera).scan();
    EXPECT_EQ(desk.thumbnails, saved);
    EXPECT_EQ(desk.framesTaken, 1);
}

TEST(ScanModesTest, WithoutLeaveOrFrameNothingIsSaved)
{
    FakeDesk desk;
    ScanModes modes(desk, desk.camera);
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
