// How much must be new under the camera for the program to call it a new page.
#include "CameraSession.h"
#include "ContinuousScan.h"
#include "FrameDelivery.h"
#include "StillCapture.h"
#include "TestImage.h"

#include <gtest/gtest.h>

#include <opencv2/imgproc.hpp>

namespace {

constexpr double looked = 0.2; // seconds from one look to the next

/// A sheet full of made words on a dark desk; the first `others` of them are made anew.
cv::Mat sheet(int others)
{
    cv::Mat rgb(480, 640, CV_8UC3, cv::Scalar(60, 58, 55));
    rgb(cv::Rect(140, 30, 360, 420)).setTo(cv::Scalar(240, 240, 236));
    int word = 0;
    for (int y = 50; y < 430; y += 14) {
        for (int x = 160, length = 0; x < 440; x += 5 * length + 10, ++word) {
            length = 3 + word * 7 % 6;
            cv::RNG ink(word < others ? 1000 + word : word);
            for (int letter = x; letter < x + 5 * length; letter += 5) {
                const cv::Rect strokes(letter, y + ink.uniform(0, 4), 3, ink.uniform(2, 9));
                cv::rectangle(rgb, strokes, cv::Scalar::all(30), cv::FILLED);
            }
        }
    }
    return rgb;
}

class PageThresholdTest : public ::testing::Test
{
protected:
    PageThresholdTest()
    {
        QObject::connect(&scan_, &ContinuousScan::autopageScanSign, &scan_, [this] { ++found_; });
        scan_.startPages();
    }
    /// Lays the page down for two seconds; the difference that the library measures is remembered.
    void lay(const cv::Mat& rgb)
    {
        for (int look = 0; look < 10; ++look, seconds_ += looked) {
            const FrameHandle frame = ownImage(camera_, makeImageHandle(rgb.cols, rgb.rows));
            auto& image = *static_cast<mirvak::Image*>(frame.get());
            rgb.copyTo(image.pixels);
            image.taken =
                std::chrono::steady_clock::time_point(std::chrono::milliseconds(int(1000 * seconds_)));
            scan_.checkautopage(frame.get());
            bool flag = false;
            measure_.MirvakImage_CheckPage(frame.get(), flag, difference_, false, 1.0);
        }
    }

    MirvakCamera camera_, measure_;
    CaptureProcessor processor_{camera_};
    FrameDelivery delivery_{camera_, [](const QImage&) {}};
    CameraSession session_{camera_, nullptr, nullptr};
    StillCapture capture_{session_, delivery_, processor_, [] { return QRect(); }};
    ContinuousScan scan_{camera_, capture_};
    double seconds_ = 1000;
    double difference_ = 0;
    int found_ = 0;
};

TEST_F(PageThresholdTest, ALineOfNewWordsIsANewPageAndTwoNewWordsAreNot)
{
    lay(sheet(0));
    ASSERT_EQ(found_, 1);
    lay(sheet(2));
    EXPECT_EQ(found_, 1) << difference_;
    lay(sheet(17));
    EXPECT_GT(difference_, 0.33); // just over the limit, so that a higher one would miss it
    EXPECT_LT(difference_, 0.45);
    EXPECT_EQ(found_, 2);
}

} // namespace
