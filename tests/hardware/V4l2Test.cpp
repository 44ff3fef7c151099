// The camera library on the real camera driver, with cameras in software on an emulated USB controller.
#include "FrameCollector.h"
#include "LabCamera.h"
#include "TempDir.h"
#include "waitFor.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cstdlib>

using ::testing::UnorderedElementsAre;

namespace {

constexpr int raw = 1, compressed = 2, newestFrameOnly = 2;

LabCameraModel documentCamera()
{
    return {"1234abcd", "Lab Doc Camera", 0, {"640x480", "1600x1200", "3264x2448"}};
}

LabCameraModel sideCamera()
{
    return {"1234abce", "Lab Side Camera", 1, {"640x480"}};
}

Picture served(const std::string& file)
{
    const char* folder = std::getenv("LUMRO_LAB_PICTURES");
    return decodeJpeg(folder ? folder + ("/" + file) : file);
}

/// Which of the lab's raw frames it is by its first row; after 64 frames the pattern repeats.
unsigned phaseOf(const Picture& frame)
{
    const std::size_t row = std::size_t(frame.width) * 3;
    const Picture first{frame.width, 1, {frame.rgb.begin(), frame.rgb.begin() + row}};
    unsigned best = 0;
    for (unsigned n = 1; n < 64; ++n) {
        if (meanDifference(first, rawFrame(frame.width, 1, n)) <
            meanDifference(first, rawFrame(frame.width, 1, best)))
            best = n;
    }
    return best;
}

class V4l2Test : public ::testing::Test
{
protected:
    ~V4l2Test() override { camera_.MirvakDevs_Deinit(); }

    /// Looks for cameras anew and opens the one of this name; null when it is not there or cannot be opened.
    void* open(const std::string& name)
    {
        EXPECT_EQ(camera_.MirvakDevs_Init(), MIRVAK_OK);
        return openAgain(name);
    }

    void* openAgain(const std::string& name)
    {
        for (int i = 0; i < camera_.MirvakDevice_GetDevCount(); ++i) {
            if (camera_.MirvakDevice_GetFriendlyName(i).find(name) != std::string::npos)
                return camera_.MirvakDevice_Create(i);
        }
        return nullptr;
    }

    std::vector<std::string> sizes(void* device, int format)
    {
        std::vector<std::string> all;
        for (int i = 0; i < camera_.MirvakDevice_GetResolutionSize(device, format); ++i) {
            all.push_back(std::to_string(camera_.MirvakDevice_GetResolutionWidth(device, format, i)) + "x" +
                          std::to_string(camera_.MirvakDevice_GetResolutionHeight(device, format, i)));
        }
        return all;
    }

    int start(void* device, int format, const std::string& size, FrameCollector& frames)
    {
        const std::vector<std::string> all = sizes(device, format);
        const int index = int(std::find(all.begin(), all.end(), size) - all.begin());
        return camera_.MirvakDevice_StartPreview(
            device, format, index, newestFrameOnly, FrameCollector::onFrame, &frames);
    }

    MirvakCamera camera_;
};

TEST_F(V4l2Test, ListsEveryCameraOnceWithNameIdTypeAndSizes)
{
    const LabCamera document(documentCamera());
    LabCamera side(sideCamera());
    ASSERT_EQ(camera_.MirvakDevs_Init(), MIRVAK_OK);
    // Each camera has a second node for metadata, which is no camera.
    ASSERT_EQ(camera_.MirvakDevice_GetDevCount(), 2);

    const int first = camera_.MirvakDevice_GetDevUsbID(0) == "1234abcd" ? 0 : 1;
    const int second = 1 - first;
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
    camera_.MirvakDevice_Release(device);

    side.unplug();
    ASSERT_EQ(camera_.MirvakDevs_Init(), MIRVAK_OK);
    EXPECT_EQ(camera_.MirvakDevice_GetDevCount(), 1);
}

TEST_F(V4l2Test, CompressedFramesAreThePicturesThatTheCameraSent)
{
    LabCamera document(documentCamera());
    void* device = open("Lab Doc Camera");
    ASSERT_NE(device, nullptr);
    FrameCollector collector(camera_, 8);
    ASSERT_EQ(start(device, compressed, "640x480", collector), MIRVAK_OK);
    ASSERT_TRUE(collector.waitForFrames(8));
    EXPECT_EQ(camera_.MirvakDevice_StopPreview(device), MIRVAK_OK);
    // The fastest of the offered rates: 333333 x 100 ns are 30 frames a second.
    EXPECT_EQ(document.waitForReport("stream"), "stream MJPG 640 480 333333");

    const Picture a = served("640x480_a.jpg"), b = served("640x480_b.jpg");
    ASSERT_GT(meanDifference(a, b), 10);
    int seenA = 0, seenB = 0;
    for (const Picture& frame : collector.frames()) {
        // A faster inverse transform rounds differently, by less than one level on average.
        const bool isA = meanDifference(frame, a) < 1, isB = meanDifference(frame, b) < 1;
        EXPECT_TRUE(isA || isB) << meanDifference(frame, a) << " and " << meanDifference(frame, b);
        seenA += isA;
        seenB += isB;
    }
    EXPECT_GT(seenA, 0);
    EXPECT_GT(seenB, 0);
}

TEST_F(V4l2Test, RawFramesHaveTheRightColours)
{
    LabCamera document(documentCamera());
    void* device = open("Lab Doc Camera");
    ASSERT_NE(device, nullptr);
    FrameCollector collector(camera_, 3);
    ASSERT_EQ(start(device, raw, "640x480", collector), MIRVAK_OK);
    ASSERT_TRUE(collector.waitForFrames(3));
    EXPECT_EQ(camera_.MirvakDevice_StopPreview(device), MIRVAK_OK);
    EXPECT_EQ(document.waitForReport("stream"), "stream YUYV 640 480 333333");

    for (const Picture& frame : collector.frames()) {
        // Integer arithmetic against real numbers: one level off, rarely two.
        EXPECT_LT(meanDifference(frame, rawFrame(640, 480, phaseOf(frame))), 1.5);
    }
}

TEST_F(V4l2Test, SavesAStraightenedCaptureOfAPage)
{
    const LabCamera document(documentCamera());
    void* device = open("Lab Doc Camera");
    ASSERT_NE(device, nullptr);
    struct Capture
    {
        MirvakCamera& camera;
        std::atomic<void*> image{nullptr};
    } capture{camera_};
    const auto keepOne = [](void* image, void*, int, int, int, void* context) {
        auto& wanted = *static_cast<Capture*>(context);
        if (image && !wanted.image)
            wanted.image = wanted.camera.MirvakImage_Clone(image);
    };
    const std::vector<std::string> all = sizes(device, compressed);
    const int index = int(std::find(all.begin(), all.end(), "1600x1200") - all.begin());
    ASSERT_EQ(
        camera_.MirvakDevice_StartPreview(device, compressed, index, newestFrameOnly, keepOne, &capture),
        MIRVAK_OK);
    ASSERT_TRUE(waitFor([&] { return capture.image != nullptr; }));
    ASSERT_EQ(camera_.MirvakDevice_StopPreview(device), MIRVAK_OK);

    const TempDir folder;
    const std::string path = folder.file("page.jpg");
    EXPECT_EQ(camera_.MirvakImage_Deskew(capture.image, 2), MIRVAK_OK);
    EXPECT_EQ(camera_.MirvakImage_Save(path.c_str(), capture.image, 90, 0), MIRVAK_OK);
    camera_.MirvakImage_Release(capture.image);

    const Picture page = decodeJpeg(path);
    // The lab's page covers a good half of the desk, and nothing of the desk is left.
    EXPECT_GT(page.width * page.height, 1600 * 1200 / 4);
    EXPECT_LT(page.width * page.height, 1600 * 1200 * 9 / 10);
}

TEST_F(V4l2Test, SurvivesAnUnpluggedCableAndStreamsAgain)
{
    LabCamera first(documentCamera());
    void* device = open("Lab Doc Camera");
    ASSERT_NE(device, nullptr);
    FrameCollector collector(camera_, 0);
    ASSERT_EQ(start(device, compressed, "640x480", collector), MIRVAK_OK);
    ASSERT_TRUE(collector.waitForFrames(2));
    first.unplug();
    EXPECT_TRUE(collector.waitForEnd());
    EXPECT_EQ(camera_.MirvakDevice_StopPreview(device), MIRVAK_OK);
    EXPECT_EQ(collector.ends(), 1);
    EXPECT_EQ(camera_.MirvakDevice_Release(device), MIRVAK_OK);
    EXPECT_EQ(openAgain("Lab Doc Camera"), nullptr); // still in the list, no longer there

    const LabCamera second(documentCamera());
    device = open("Lab Doc Camera");
    ASSERT_NE(device, nullptr);
    FrameCollector after(camera_, 0);
    ASSERT_EQ(start(device, compressed, "640x480", after), MIRVAK_OK);
    EXPECT_TRUE(after.waitForFrames(2));
}

TEST_F(V4l2Test, TwoCamerasStreamAtOnceAndABusyOneIsRefused)
{
    const LabCamera document(documentCamera());
    const LabCamera side(sideCamera());
    void* device = open("Lab Doc Camera");
    void* other = openAgain("Lab Side Camera");
    ASSERT_TRUE(device && other);
    FrameCollector left(camera_, 1), right(camera_, 1);
    ASSERT_EQ(start(device, compressed, "640x480", left), MIRVAK_OK);
    ASSERT_EQ(start(other, raw, "640x480", right), MIRVAK_OK);
    EXPECT_TRUE(left.waitForFrames(4));
    EXPECT_TRUE(right.waitForFrames(4));

    MirvakCamera rival;
    ASSERT_EQ(rival.MirvakDevs_Init(), MIRVAK_OK);
    for (int i = 0; i < rival.MirvakDevice_GetDevCount(); ++i) {
        FrameCollector none(rival, 0);
        if (void* taken = rival.MirvakDevice_Create(i)) {
            EXPECT_EQ(rival.MirvakDevice_StartPreview(
                          taken, compressed, 0, newestFrameOnly, FrameCollector::onFrame, &none),
                      MIRVAK_BUSY);
            rival.MirvakDevice_Release(taken);
        }
    }
    EXPECT_TRUE(left.waitForFrames(8)); // the rival did no harm
}

TEST_F(V4l2Test, PaperSizeMovesTheCamerasZoom)
{
    LabCamera document(documentCamera());
    void* device = open("Lab Doc Camera");
    ASSERT_NE(device, nullptr);
    FrameCollector collector(camera_, 0);
    ASSERT_EQ(start(device, compressed, "640x480", collector), MIRVAK_OK);
    ASSERT_TRUE(collector.waitForFrames(1));
    const std::string zoom = "control 1 11 "; // of the camera terminal
    ASSERT_EQ(camera_.MirvakDevice_SetCameraSize(device, 4), MIRVAK_OK);
    const std::string small = document.waitForReport(zoom);
    ASSERT_EQ(camera_.MirvakDevice_SetCameraSize(device, 3), MIRVAK_OK);
    const std::string large = document.waitForReport(zoom);
    ASSERT_FALSE(small.empty() || large.empty());
    EXPECT_GT(std::stoi(small.substr(zoom.size())), std::stoi(large.substr(zoom.size())));
}

} // namespace
