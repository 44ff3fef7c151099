#include "CompositeCapture.h"

#include "FakeDesk.h"
#include "FreshSettings.h"
#include "Pixels.h"
#include "ScanModes.h"
#include "Settings.h"

namespace {

class CompositeCaptureTest : public FreshSettings
{
protected:
    CompositeCaptureTest()
    {
        settings::cameraSynthesis.write(settings, true);
        desk_.secondShown = true;
        desk_.frameSize = QSize(200, 160);
        desk_.savesAs = QStringList{QStringLiteral("/tmp/x.jpg")};
    }
    /// The part of the saved picture that has the second camera's colour.
    QRect insetOfCapture(int corner)
    {
        settings::mergePos.write(settings, corner);
        QRect inset;
        desk_.whileSaving = [&](void* image) {
            const cv::Rect box = otherThan(static_cast<mirvak::Image*>(image)->pixels, {200, 100, 50});
            inset = QRect(box.x, box.y, box.width, box.height);
        };
        ScanModes(desk_, desk_.camera).scan();
        return inset;
    }

    FakeDesk desk_;
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
    settings::scanType.write(settings, 3);
    insetOfCapture(0);
    EXPECT_EQ(desk_.colourModes.last(), 3);
}

TEST_F(CompositeCaptureTest, CroppingIsRefusedAndAMissingFrameSavesNothing)
{
    desk_.cropping = 1;
    ScanModes modes(desk_, desk_.camera);
    modes.scan();
    EXPECT_EQ(desk_.told.join(u'|'),
              QStringLiteral("Tips|Please turn off deskew before using composite photo feature again"));
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

    desk_.secondComes = false;
    desk_.secondShown = false;
    modes.scan();
    desk_.secondShown = true;
    settings::cameraSynthesis.write(settings, false);
    modes.scan();
    EXPECT_EQ(desk_.colourModes.size(), 2);
}

} // namespace
