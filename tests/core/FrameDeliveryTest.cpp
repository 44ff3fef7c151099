#include "FrameDelivery.h"

#include "CaptureProcessor.h"
#include "TestImage.h"
#include "mirvakcamera.h"

#include <gtest/gtest.h>

#include <set>
#include <vector>

namespace {

class FrameDeliveryTest : public ::testing::Test
{
protected:
    void deliver(int width, int height)
    {
        const FrameHandle image = ownImage(camera_, makeImageHandle(width, height, {10, 20, 30}));
        delivery_.onFrame(image.get(), width, height);
    }

    MirvakCamera camera_;
    std::vector<QImage> shown_;
    FrameDelivery delivery_{camera_, [this](const QImage& picture) { shown_.push_back(picture); }};
};

TEST_F(FrameDeliveryTest, QuarterTurnsSwapTheShownSize)
{
    const QSize turned(1080, 1920);
    for (const auto& [rotation, size] : {std::pair{0, QSize(1920, 1080)},
                                         std::pair{1, turned},
                                         std::pair{2, QSize(1920, 1080)},
                                         std::pair{3, turned},
                                         std::pair{4, QSize(1920, 1080)}}) {
        delivery_.setRotation(rotation);
        deliver(1920, 1080);
        EXPECT_EQ(shown_.back().size(), size) << rotation;
        EXPECT_EQ(shown_.back().pixelColor(size.width() - 1, size.height() - 1), QColor(10, 20, 30));
    }
}

TEST_F(FrameDeliveryTest, PixelsStayUntilTheLastPictureIsDroppedAndAreThenUsedAgain)
{
    std::set<const uchar*> places;
    for (int i = 0; i < 50; ++i) {
        deliver(64, 48);
        places.insert(shown_.back().constBits());
        if (shown_.size() > 2) // a view that is two frames behind
            shown_.erase(shown_.begin());
    }
    EXPECT_LE(places.size(), 4U);
    EXPECT_NE(shown_[0].constBits(), shown_[1].constBits());
}

TEST_F(FrameDeliveryTest, ANullFrameIsIgnoredAndTheSecondFrameIsToldOnce)
{
    int told = 0;
    delivery_.onSecondFrame([&] { ++told; });
    delivery_.onFrame(nullptr, 8, 8);
    deliver(8, 8);
    EXPECT_EQ(told, 0);
    deliver(8, 8);
    deliver(8, 8);
    EXPECT_EQ(told, 1);
    EXPECT_EQ(shown_.size(), 3U);
}

TEST_F(FrameDeliveryTest, PaperSizeIsLookedAtOnEveryThirdFrame)
{
    int looks = 0;
    delivery_.setPaperSizeCheck([&](void*) { ++looks; });
    for (int i = 0; i < 9; ++i)
        deliver(8, 8);
    EXPECT_EQ(looks, 3);
}

TEST_F(FrameDeliveryTest, TheOutlineIsDrawnOnlyWithAutomaticCropping)
{
    cv::Mat page(480, 640, CV_8UC3, cv::Scalar(40, 45, 50));
    page(cv::Rect(120, 80, 400, 320)).setTo(cv::Scalar(250, 250, 250));
    const auto redPixels = [&](int mode) {
        void* handle = makeImageHandle(640, 480);
        page.copyTo(static_cast<mirvak::Image*>(handle)->pixels);
        const FrameHandle image = ownImage(camera_, handle);
        delivery_.setCroppingMode(mode);
        delivery_.onFrame(image.get(), 640, 480);
        int red = 0;
        for (int y = 0; y < 480; ++y) {
            for (int x = 0; x < 640; ++x)
                red += shown_.back().pixelColor(x, y) == QColor(255, 0, 0) ? 1 : 0;
        }
        return red;
    };
    EXPECT_EQ(redPixels(cropping::none), 0);
    // Four sides of 720 px half perimeter, five pixels thick, less where smoothing touches them.
    EXPECT_GT(redPixels(cropping::deskew), 4000);
}

} // namespace
