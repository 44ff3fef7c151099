#include "FrameDelivery.h"

#include "CaptureProcessor.h"
#include "TestImage.h"
#include "mirvakcamera.h"

#include <gtest/gtest.h>

#include <future>
#include <thread>
#include <vector>

namespace {

class FrameDeliveryTest : public ::testing::Test
{
protected:
    void deliver(int width, int height)
    {
        const FrameHandle image = ownImage(camera_, makeImageHandle(width, height, {10, 20, 30}));
        delivery_.onFrame(image.get());
    }

    MirvakCamera camera_;
    std::vector<QImage> shown_;
    FrameDelivery delivery_{camera_, [this](const QImage& picture) { shown_.push_back(picture); }};
};

// The view, a capture and all that look at a frame get the same turned picture.
TEST_F(FrameDeliveryTest, EverybodyGetsThePictureTurnedClockwise)
{
    const QSize lying(12, 8), standing(8, 12);
    struct Turn
    {
        int asked;
        QSize size;
        QPoint mark; ///< where the red top left corner comes to lie
    };
    for (const Turn& turn : {Turn{0, lying, {0, 0}},
                             Turn{1, standing, {7, 0}},
                             Turn{2, lying, {11, 7}},
                             Turn{3, standing, {0, 11}},
                             Turn{4, lying, {0, 0}},
                             Turn{-1, lying, {0, 0}}}) {
        std::vector<cv::Mat> seen;
        const auto look = [&](void* image) {
            seen.push_back(static_cast<mirvak::Image*>(image)->pixels.clone());
        };
        FrameDelivery delivery(camera_, [this](const QImage& picture) { shown_.push_back(picture); });
        delivery.setRecorder(look);
        delivery.setPageCheck(look);
        delivery.setPaperSizeCheck(look);
        delivery.setRotation(turn.asked);
        auto capture =
            std::async(std::launch::async, [&] { return delivery.channel().take(std::chrono::minutes(1)); });
        while (!delivery.channel().isRequested())
            std::this_thread::yield();
        const FrameHandle image = ownImage(camera_, makeImageHandle(12, 8, {10, 20, 30}));
        static_cast<mirvak::Image*>(image.get())->pixels.at<cv::Vec3b>(0, 0) = cv::Vec3b(255, 0, 0);
        delivery.onFrame(image.get());
        look(capture.get().get());
        EXPECT_EQ(seen.size(), 4U);
        ASSERT_EQ(shown_.back().size(), turn.size) << turn.asked;
        EXPECT_EQ(shown_.back().pixelColor(turn.mark), QColor(255, 0, 0)) << turn.asked;
        EXPECT_EQ(shown_.back().pixelColor(turn.size.width() / 2, turn.size.height() / 2),
                  QColor(10, 20, 30));
        for (const cv::Mat& rgb : seen) {
            ASSERT_EQ(QSize(rgb.cols, rgb.rows), turn.size) << turn.asked;
            EXPECT_EQ(rgb.at<cv::Vec3b>(turn.mark.y(), turn.mark.x()), cv::Vec3b(255, 0, 0)) << turn.asked;
        }
    }
}

TEST_F(FrameDeliveryTest, AShownPictureIsTheFrameItselfAndNeverChanges)
{
    auto camera = std::make_unique<MirvakCamera>();
    QImage shown;
    {
        FrameDelivery delivery(*camera, [&](const QImage& picture) { shown = picture; });
        const FrameHandle image = ownImage(*camera, makeImageHandle(64, 48, {10, 20, 30}));
        cv::Mat& pixels = static_cast<mirvak::Image*>(image.get())->pixels;
        delivery.onFrame(image.get());
        EXPECT_EQ(shown.constBits(), pixels.data) << "no copy";
        EXPECT_EQ(camera->MirvakImage_Threshold(image.get()), MIRVAK_OK);
        EXPECT_NE(pixels.at<cv::Vec3b>(0, 0), cv::Vec3b(10, 20, 30));
    }
    camera.reset();
    EXPECT_EQ(shown.pixelColor(0, 0), QColor(10, 20, 30));
    EXPECT_EQ(shown.pixelColor(63, 47), QColor(10, 20, 30));
}

// Who waits for a picture, records it or looks for a page in it gets it as the camera saw it.
TEST_F(FrameDeliveryTest, TheOutlineIsInTheShownPictureOnly)
{
    cv::Mat page(480, 640, CV_8UC3, cv::Scalar(40, 45, 50));
    page(cv::Rect(120, 80, 400, 320)).setTo(cv::Scalar(250, 250, 250));
    std::vector<cv::Mat> seen;
    const auto look = [&](void* image) {
        seen.push_back(static_cast<mirvak::Image*>(image)->pixels.clone());
    };
    delivery_.setRecorder(look);
    delivery_.setPageCheck(look);
    delivery_.setPaperSizeCheck(look);
    delivery_.setCroppingMode(cropping::deskew);
    auto capture =
        std::async(std::launch::async, [&] { return delivery_.channel().take(std::chrono::minutes(1)); });
    while (!delivery_.channel().isRequested())
        std::this_thread::yield();
    const FrameHandle image = ownImage(camera_, makeImageHandle(640, 480));
    page.copyTo(static_cast<mirvak::Image*>(image.get())->pixels);
    delivery_.onFrame(image.get());
    const FrameHandle taken = capture.get();
    ASSERT_TRUE(taken);
    look(taken.get());
    ASSERT_EQ(seen.size(), 4U);
    for (const cv::Mat& rgb : seen)
        EXPECT_EQ(cv::norm(rgb, page, cv::NORM_INF), 0);
    EXPECT_EQ(shown_.back().pixelColor(320, 80), QColor(255, 0, 0));
}

TEST_F(FrameDeliveryTest, ANullFrameIsIgnoredAndTheSecondFrameIsToldOnce)
{
    int told = 0;
    delivery_.onSecondFrame([&] { ++told; });
    delivery_.onFrame(nullptr);
    deliver(8, 8);
    EXPECT_EQ(told, 0);
    deliver(8, 8);
    deliver(8, 8);
    EXPECT_EQ(told, 1);
    EXPECT_EQ(shown_.size(), 3U);
}

TEST_F(FrameDeliveryTest, PaperSizeIsLookedAtOnEveryThirdFrameAndThePageOnEveryFifth)
{
    int sizes = 0, pages = 0, recorded = 0;
    delivery_.setPaperSizeCheck([&](void*) { ++sizes; });
    delivery_.setPageCheck([&](void*) { ++pages; });
    delivery_.setRecorder([&](void*) { ++recorded; });
    for (int i = 0; i < 30; ++i)
        deliver(8, 8);
    EXPECT_EQ(sizes, 10);
    EXPECT_EQ(pages, 6);
    EXPECT_EQ(recorded, 30);
}

TEST_F(FrameDeliveryTest, OutlinesAreDrawnOnlyWithAutomaticCropping)
{
    cv::Mat page(480, 640, CV_8UC3, cv::Scalar(40, 45, 50));
    page(cv::Rect(120, 80, 400, 320)).setTo(cv::Scalar(250, 250, 250));
    PageMark mark;
    delivery_.setMark([&](const PageMark& told) { mark = told; });
    const auto redPixels = [&](int mode) {
        void* handle = makeImageHandle(640, 480);
        page.copyTo(static_cast<mirvak::Image*>(handle)->pixels);
        const FrameHandle image = ownImage(camera_, handle);
        delivery_.setCroppingMode(mode);
        delivery_.onFrame(image.get());
        int red = 0;
        for (int y = 0; y < 480; ++y) {
            for (int x = 0; x < 640; ++x)
                red += shown_.back().pixelColor(x, y) == QColor(255, 0, 0) ? 1 : 0;
        }
        return red;
    };
    for (const int other : {cropping::none, cropping::selection})
        EXPECT_EQ(redPixels(other), 0) << other;
    EXPECT_TRUE(mark.corners.isEmpty());
    // Four sides of 720 px half perimeter, five pixels thick, less where smoothing touches them.
    EXPECT_GT(redPixels(cropping::deskew), 4000);
    EXPECT_EQ(mark.shot, MIRVAK_SHOT_LOOKING);
    EXPECT_LT((mark.corners.boundingRect().center() - QPointF(319.5, 239.5)).manhattanLength(), 3);
    page(cv::Rect(300, 60, 30, 400)).setTo(cv::Scalar(40, 45, 50)); // two pages side by side
    EXPECT_EQ(redPixels(cropping::none), 0);
    EXPECT_EQ(mark.shot, MIRVAK_SHOT_NO_PAGE);
    for (int i = 0; i < 5; ++i) // each of them in every frame, not only in those that are searched
        EXPECT_GT(redPixels(cropping::second), 10'000) << i;
    page.colRange(330, 640).setTo(cv::Scalar(40, 45, 50)); // one is taken away
    int red = 0;
    for (int i = 0; i < 4; ++i)
        red = redPixels(cropping::second);
    EXPECT_LT(red, 9000);
    EXPECT_GT(red, 4000);
    EXPECT_EQ(redPixels(cropping::none), 0);
    EXPECT_GT(redPixels(cropping::second), 4000) << "with the first frame";
}

} // namespace
