#include "CompositeCapture.h"

#include "FakeDesk.h"
#include "Pixels.h"
#include "ScanModes.h"
#include "Settings.h"

#include <gtest/gtest.h>

namespace {

class CompositeCaptureTest : public ::testing::Test
{
protected:
    CompositeCaptureTest()
    {
        settings::cameraSynthesis.write(store_, true);
        desk_.secondShown = true;
        desk_.frameSize = QSize(200, 160);
        desk_.savesAs = QStringList{QStringLiteral("/tmp/x.jpg")};
    }
    ~CompositeCaptureTest() override { store_.GetSettings()->clear(); }

    /// The part of the saved picture that has the second camera's colour.
    QRect insetOfCapture(int corner)
    {
        settings::mergePos.write(store_, corner);
        QRect inset;
        desk_.whileSaving = [&](void* image) {
            const cv::Rect box = otherThan(static_cast<mirvak::Image*>(image)->pixels, {200, 100, 50});
            inset = QRect(box.x, box.y, box.width, box.height);
        };
        ScanModes(desk_, desk_.camera).scan();
        return inset;
    }

    FakeDesk desk_;
    ConfigSettings store_;
};

TEST_F(CompositeCaptureTest, TheInsetIsAThirdAsLargeAndLeavesRoomForHalf)
{
    // The second frame is 12 x 9.
    const QSize third(4, 3);
    EXPECT_EQ(insetOfCapture(0), QRect(QPoint(50, 50), third));
    EXPECT_EQ(insetOfCapture(1), QRect(QPoint(50, 160 - 4 - 50), third));
    EXPECT_EQ(insetOfCapture(2), QRect(QPoint(200 - 6 - 50, 50), third));
    EXPECT_EQ(insetOfCapture(3), QRect(QPoint(200 - 6 - 50, 160 - 4 - 50), third));
    EXPECT_EQ(insetOfCapture(-7), QRect(QPoint(50, 50), third));
    EXPECT_EQ(desk_.thumbnails.first(), QStringLiteral("/tmp/x.jpg"));
}

TEST_F(CompositeCaptureTest, CroppingIsRefusedAndAMissingFrameSavesNothing)
{
    desk_.cropping = 1;
    ScanModes modes(desk_, desk_.camera);
    modes.scan();
    EXPECT_EQ(
        desk_.told,
        (QStringList{QStringLiteral("Tips"),
                     QStringLiteral("Please turn off deskew before using composite photo feature again")}));
    EXPECT_EQ(desk_.framesTaken, 0);

    desk_.cropping = 0;
    desk_.secondComes = false;
    modes.scan();
    EXPECT_EQ(desk_.notices.size(), 1);
    desk_.secondComes = true;
    desk_.secondSize = QSize(2, 2); // a third of it is nothing
    modes.scan();
    EXPECT_EQ(desk_.notices.size(), 2);
    EXPECT_TRUE(desk_.colourModes.isEmpty());
}

TEST_F(CompositeCaptureTest, WithoutTheSettingOrTheOverlayTheMainCameraAloneIsTaken)
{
    desk_.secondComes = false;
    desk_.secondShown = false;
    ScanModes modes(desk_, desk_.camera);
    modes.scan();
    desk_.secondShown = true;
    settings::cameraSynthesis.write(store_, false);
    modes.scan();
    EXPECT_EQ(desk_.colourModes.size(), 2);
}

} // namespace
