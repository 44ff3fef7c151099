#include "PaperSize.h"

#include "FakeCamera.h"
#include "FrameCollector.h"
#include "OpenCamera.h"

#include <gtest/gtest.h>

#include <opencv2/imgproc.hpp>

using namespace mirvak;

namespace {

/// A dark desk with a lit sheet in the middle that takes `share` of the picture's width and height.
cv::Mat sheet(double share, cv::Point2d offset = {0, 0})
{
    const cv::Size size(800, 600);
    cv::Mat rgb(size, CV_8UC3, cv::Scalar(60, 55, 50));
    const cv::Size2d page(size.width * share, size.height * share);
    const cv::Point2d corner((size.width - page.width) / 2 + offset.x,
                             (size.height - page.height) / 2 + offset.y);
    cv::rectangle(rgb, cv::Rect2d(corner, page), cv::Scalar(235, 235, 230), cv::FILLED);
    cv::Mat noise(size, CV_8UC3);
    cv::theRNG().state = 77;
    cv::randu(noise, 0, 8);
    return rgb + noise;
}

} // namespace

TEST(PaperSize, ASheetAsksForTheSizeThatItNeeds)
{
    struct Case
    {
        const char* what;
        double share;
        double aside;
        int present;
        std::optional<int> wanted;
        double low = 0;
    };
    for (const Case& sheetIs : {Case{"0.94 of the area", 0.97, 0, paperA4, paperA3},
                                {"larger than what is seen", 1.2, 0, paperA4, paperA3},
                                {"beyond the right border", 0.6, 250, paperA4, paperA3},
                                {"0.64 of the area", 0.8, 0, paperA4, {}},
                                {"too large for all", 0.97, 0, paperA3, {}},
                                {"one that fits the middle", 0.6, 0, paperA3, paperA4},
                                {"one that nearly fills A4", 0.665, 0, paperA3, {}},
                                {"larger than A3", 1.2, 0, paperA3, {}},
                                {"one that A4 would cut off", 0.6, 150, paperA3, {}},
                                {"too large for the middle", 0.8, 0, paperA3, {}},
                                {"smaller than what counts as a page", 0.6, 0, paperA3, {}, 0.5},
                                {"not there", 0, 0, paperA4, {}},
                                {"not there", 0, 0, paperA3, {}}})
        EXPECT_EQ(judgePaperSize(sheet(sheetIs.share, {sheetIs.aside, 0}), sheetIs.present, sheetIs.low, 0.9),
                  sheetIs.wanted)
            << sheetIs.what;
}

TEST(PaperSize, OneSheetNeverSwingsBetweenTheSizes)
{
    for (double shareInA3 = 0.5; shareInA3 < 0.75; shareInA3 += 0.01) {
        const bool toA4 = judgePaperSize(sheet(shareInA3), paperA3, 0.0, 0.9) == paperA4;
        const bool back = judgePaperSize(sheet(shareInA3 / a4ShareOfA3), paperA4, 0.0, 0.9) == paperA3;
        EXPECT_FALSE(toA4 && back) << shareInA3;
    }
}

TEST(PaperSize, ACamerasOwnZoomIsWideAgainWhenItIsClosed)
{
    struct ZoomCamera : FakeCamera
    {
        explicit ZoomCamera(double& factor)
            : FakeCamera({{ReadStatus::Frame, pictures::jpeg(pictures::textured({width, height}))}}),
              zoom(factor)
        {
        }
        bool setZoom(double factor) override
        {
            zoom = factor;
            return true;
        }
        double& zoom;
    };
    ImagePool pool;
    double zoom = 1.0;
    {
        OpenCamera camera(std::make_unique<ZoomCamera>(zoom), pool);
        EXPECT_EQ(camera.setPaperSize(paperA4), MIRVAK_OK);
        EXPECT_NEAR(zoom, 1.414, 0.001);
        FrameCollector frames;
        double differs = 255;
        const cv::Mat whole = pictures::textured({FakeCamera::width, FakeCamera::height});
        frames.onFrame = [&](Image& image) {
            differs = cv::norm(image.pixels, whole, cv::NORM_L1) / double(whole.total());
        };
        ASSERT_EQ(camera.start(2, 0, 1, [&](Image* image) { frames.take(image); }), MIRVAK_OK);
        EXPECT_TRUE(frames.waitForFrames(1));
        camera.stop();
        EXPECT_LT(differs, 30) << "the lens has done it: nothing more is cut off";
    }
    EXPECT_EQ(zoom, 1.0);
    {
        OpenCamera whole(std::make_unique<ZoomCamera>(zoom), pool);
        EXPECT_EQ(whole.setPaperSize(paperA3), MIRVAK_OK);
        zoom = 1.2; // by the user, in another program
    }
    EXPECT_EQ(zoom, 1.2);
}
