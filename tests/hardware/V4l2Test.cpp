// The camera library on the real camera driver, with cameras in software on an emulated USB controller.
#include "FrameCollector.h"
#include "LabCamera.h"
#include "Picture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

using ::testing::UnorderedElementsAre;

namespace {

constexpr int raw = 1, compressed = 2, newestFrameOnly = 2;

LabCameraModel documentCamera()
{
    return {"1234abcd", "Lab Doc Camera", 0, {"640x480", "1600x1200", "3264x2448"}};
}

cv::Mat served(const std::string& file)
{
    const char* folder = std::getenv("LUMRO_LAB_PICTURES");
    return decodeJpeg(folder ? folder + ("/" + file) : file);
}

/// The difference from the most similar of the lab's raw frames; after 64 frames the pattern repeats.
double rawDifference(const cv::Mat& frame)
{
    double least = 255;
    for (unsigned n = 0; n < 64; ++n) {
        if (meanDifference(frame.row(0), rawFrame({frame.cols, 1}, n)) < 2.5) // the next is 4 off
            least = std::min(least, meanDifference(frame, rawFrame(frame.size(), n)));
    }
    return least;
}

class V4l2Test : public ::testing::Test
{
protected:
    ~V4l2Test() override { camera_.MirvakDevs_Deinit(); }

    std::vector<std::string> sizes(void* device, int format)
    {
        std::vector<std::string> all;
        for (int i = 0; i < camera_.MirvakDevice_GetResolutionSize(device, format); ++i) {
            all.push_back(std::to_string(camera_.MirvakDevice_GetResolutionWidth(device, format, i)) + "x" +
                          std::to_string(camera_.MirvakDevice_GetResolutionHeight(device, format, i)));
        }
        return all;
    }

    MirvakCamera camera_;
};

TEST_F(V4l2Test, ListsEveryCameraOnceWithNameIdTypeAndSizes)
{
    const LabCamera document(documentCamera()), side({"1234abce", "Lab Side Camera", 1, {"640x480"}});
    ASSERT_EQ(camera_.MirvakDevs_Init(), MIRVAK_OK);
    // Each camera has a second node for metadata, which is no camera.
    ASSERT_EQ(camera_.MirvakDevice_GetDevCount(), 2);
    const int first = camera_.MirvakDevice_GetDevUsbID(0) == "1234abcd" ? 0 : 1, second = 1 - first;
    EXPECT_EQ(camera_.MirvakDevice_GetDevUsbID(first), "1234abcd");
    EXPECT_EQ(camera_.MirvakDevice_GetDevUsbID(second), "1234abce");
    EXPECT_THAT(camera_.MirvakDevice_GetFriendlyName(first), ::testing::HasSubstr("Lab Doc Camera"));
    EXPECT_THAT(camera_.MirvakDevice_GetFriendlyName(second), ::testing::HasSubstr("Lab Side Camera"));
    // Neither is a known model, so the one with the largest picture is the document camera.
    EXPECT_EQ(camera_.MirvakDevice_GetCameraType(first), 1);
    EXPECT_EQ(camera_.MirvakDevice_GetCameraType(second), 2);
    void* device = camera_.MirvakDevice_Create(first);
    ASSERT_NE(device, nullptr);
    EXPECT_EQ(camera_.MirvakDevice_GetSubtype(device), compressed);
    for (const int format : {raw, compressed})
        EXPECT_THAT(sizes(device, format), UnorderedElementsAre("640x480", "1600x1200", "3264x2448"));
}

TEST_F(V4l2Test, FramesAreThePicturesThatTheCameraSent)
{
    LabCamera document(documentCamera());
    ASSERT_EQ(camera_.MirvakDevs_Init(), MIRVAK_OK);
    void* device = camera_.MirvakDevice_Create(0);
    ASSERT_NE(device, nullptr);
    const cv::Mat a = served("640x480_a.jpg"), b = served("640x480_b.jpg");
    ASSERT_GT(meanDifference(a, b), 10);
    for (const int format : {compressed, raw}) {
        SCOPED_TRACE(format);
        const int count = format == raw ? 3 : 40; // a busy computer gets only some, perhaps of one kind
        FrameCollector collector(camera_, count);
        const std::vector<std::string> all = sizes(device, format);
        const int index = int(std::find(all.begin(), all.end(), "640x480") - all.begin());
        ASSERT_EQ(camera_.MirvakDevice_StartPreview(
                      device, format, index, newestFrameOnly, FrameCollector::onFrame, &collector),
                  MIRVAK_OK);
        ASSERT_TRUE(collector.waitForFrames(count));
        EXPECT_EQ(camera_.MirvakDevice_StopPreview(device), MIRVAK_OK);
        // The fastest of the offered rates: 333333 x 100 ns are 30 frames a second.
        EXPECT_EQ(document.waitForReport("stream"),
                  std::string(format == raw ? "stream YUYV" : "stream MJPG") + " 640 480 333333");
        bool seenA = false, seenB = false;
        for (const cv::Mat& frame : collector.frames()) {
            // A faster inverse transform rounds differently, by less than one level on average; integer
            // arithmetic against real numbers is one level off, rarely two.
            const bool isA = meanDifference(frame, a) < 1, isB = meanDifference(frame, b) < 1;
            EXPECT_TRUE(format == raw ? rawDifference(frame) < 1.5 : isA || isB);
            seenA |= isA;
            seenB |= isB;
        }
        EXPECT_TRUE(format == raw || (seenA && seenB));
    }
}

} // namespace
