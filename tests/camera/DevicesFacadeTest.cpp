// The Devs, Device and Hid calls as the program makes them.
#include "FrameCollector.h"
#include "Image.h"
#include "mirvakcamera.h"

#include <gmock/gmock.h>

#include <atomic>
#include <cstdlib>
#include <future>
#include <set>
#include <thread>

using ::testing::ElementsAre;

namespace {

class DevicesFacade : public ::testing::Test
{
protected:
    DevicesFacade()
    {
        setenv("XDG_CONFIG_HOME", folder.path().c_str(), 1);
        pictures::writeFilm(folder, 4, {64, 48});
    }
    ~DevicesFacade() override { unsetenv("LUMRO_DESK"); }

    /// A desk of these cameras; the settings that all share are added.
    void lay(const std::vector<std::string>& cameras, const std::string& more = "")
    {
        std::string text = "real = false;\n" + more + "\ncameras = (";
        for (size_t i = 0; i < cameras.size(); ++i)
            text +=
                std::string(i ? ", " : "") + "{ source = \"film\"; fps = 100; hold = 0; " + cameras[i] + "}";
        setenv("LUMRO_DESK", folder.write("desk.cfg", text + ");").c_str(), 1);
    }

    void begin(const std::vector<std::string>& cameras, const std::string& more = "")
    {
        lay(cameras, more);
        ASSERT_EQ(camera.MirvakDevs_Init(), MIRVAK_OK);
    }

    static void onFrame(void* image, void* userData, int byteSize, int width, int height, void* context)
    {
        auto* frame = static_cast<mirvak::Image*>(image);
        EXPECT_EQ(userData, nullptr);
        EXPECT_EQ(byteSize, width * height * 3);
        EXPECT_EQ(cv::Size(width, height), frame ? frame->pixels.size() : cv::Size());
        static_cast<FrameCollector*>(context)->take(frame);
    }

    int start(void* device, FrameCollector& frames)
    {
        return camera.MirvakDevice_StartPreview(device, 2, 0, 2, &DevicesFacade::onFrame, &frames);
    }

    const TempDir folder;
    FrameCollector collector;
    MirvakCamera camera;
};

} // namespace

TEST_F(DevicesFacade, WithoutADeskThereIsNoVirtualCamera)
{
    ASSERT_EQ(camera.MirvakDevs_Init(), MIRVAK_OK);
    const int real = camera.MirvakDevice_GetDevCount();
    lay({"name = \"A\""}, "real = true;");
    folder.write("desk.cfg", "cameras = ( { name = \"A\"; source = \"film\"; } );");
    ASSERT_EQ(camera.MirvakDevs_Init(), MIRVAK_OK);
    EXPECT_EQ(camera.MirvakDevice_GetDevCount(), real + 1);
    EXPECT_EQ(camera.MirvakDevice_GetFriendlyName(0), "A") << "virtual cameras come first";
    folder.write("desk.cfg", "cameras = (");
    ASSERT_EQ(camera.MirvakDevs_Init(), MIRVAK_OK);
    EXPECT_EQ(camera.MirvakDevice_GetDevCount(), real);
}

TEST_F(DevicesFacade, ListsWhatTheDeskDescribes)
{
    begin({"name = \"Desk camera\"; type = 1; usb = \"1b172000\"; resolutions = [\"32x24\", \"native\"]",
           "name = \"Face\"; type = 2; usb = \"0c456366\""});
    ASSERT_EQ(camera.MirvakDevice_GetDevCount(), 2);
    EXPECT_EQ(camera.MirvakDevice_GetFriendlyName(1), "Face");
    EXPECT_EQ(camera.MirvakDevice_GetDevUsbID(0), "1b172000");
    EXPECT_EQ(camera.MirvakDevice_GetCameraType(0), 1);
    EXPECT_EQ(camera.MirvakDevice_GetCameraType(1), 2);
    void* const device = camera.MirvakDevice_Create(0);
    ASSERT_TRUE(device);
    EXPECT_EQ(camera.MirvakDevice_GetSubtype(device), 2);
    for (const int format : {1, 2}) {
        ASSERT_EQ(camera.MirvakDevice_GetResolutionSize(device, format), 2);
        EXPECT_EQ(camera.MirvakDevice_GetResolutionWidth(device, format, 0), 32);
        EXPECT_EQ(camera.MirvakDevice_GetResolutionHeight(device, format, 1), 48);
    }
    EXPECT_EQ(camera.MirvakDevs_Init(), MIRVAK_BUSY);
    EXPECT_EQ(camera.MirvakDevice_GetDevCount(), 2);
    EXPECT_EQ(camera.MirvakDevice_Release(device), MIRVAK_OK);
    EXPECT_EQ(camera.MirvakDevs_Deinit(), MIRVAK_OK);
    EXPECT_EQ(camera.MirvakDevice_GetDevCount(), 0);
}

TEST_F(DevicesFacade, AnswersNonsenseWithCodes)
{
    begin({"name = \"A\""});
    int alien = 0;
    int size = 4;
    mirvak::Image picture;
    for (void* handle : {static_cast<void*>(nullptr), static_cast<void*>(&alien)}) {
        EXPECT_EQ(camera.MirvakDevice_Release(handle), MIRVAK_BAD_HANDLE);
        EXPECT_EQ(camera.MirvakDevice_StopPreview(handle), MIRVAK_BAD_HANDLE);
        EXPECT_EQ(start(handle, collector), MIRVAK_BAD_HANDLE);
        EXPECT_EQ(camera.MirvakDevice_SetCameraSize(handle, 4), MIRVAK_BAD_HANDLE);
        EXPECT_EQ(camera.MirvakDevice_JudgeCameraSize(handle, &picture, size, 0, 0.9), MIRVAK_BAD_HANDLE);
        EXPECT_EQ(camera.MirvakDevice_GetSubtype(handle), 0);
        EXPECT_EQ(camera.MirvakDevice_GetResolutionSize(handle, 2), 0);
        EXPECT_EQ(camera.MirvakDevice_GetResolutionWidth(handle, 2, 0), 0);
    }
    for (const int index : {-1, 1}) {
        EXPECT_FALSE(camera.MirvakDevice_Create(index));
        EXPECT_EQ(camera.MirvakDevice_GetFriendlyName(index), "");
        EXPECT_EQ(camera.MirvakDevice_GetCameraType(index), 0);
    }
    void* const device = camera.MirvakDevice_Create(0);
    ASSERT_TRUE(device);
    const auto preview = [&](int format, int index, int mode, MirvakFrameCallback callback) {
        return camera.MirvakDevice_StartPreview(device, format, index, mode, callback, &collector);
    };
    EXPECT_EQ(preview(3, 0, 2, &onFrame), MIRVAK_BAD_ARGUMENT);
    EXPECT_EQ(preview(2, 1, 2, &onFrame), MIRVAK_BAD_ARGUMENT);
    EXPECT_EQ(preview(2, 0, 0, &onFrame), MIRVAK_BAD_ARGUMENT);
    EXPECT_EQ(preview(2, 0, 2, nullptr), MIRVAK_BAD_ARGUMENT);
    EXPECT_EQ(camera.MirvakDevice_StopPreview(device), MIRVAK_OK) << "nothing runs";
    EXPECT_EQ(camera.MirvakDevice_SetCameraSize(device, 5), MIRVAK_BAD_ARGUMENT);
    EXPECT_EQ(camera.MirvakDevice_JudgeCameraSize(device, nullptr, size, 0, 0.9), MIRVAK_BAD_HANDLE);
}

TEST_F(DevicesFacade, TwoCamerasStreamAtOnceAndDeinitEndsThem)
{
    begin({"name = \"A\"", "name = \"B\"; resolutions = [\"100x50\"]"});
    FrameCollector second;
    void* const a = camera.MirvakDevice_Create(0);
    void* const b = camera.MirvakDevice_Create(1);
    EXPECT_EQ(camera.MirvakDevice_GetCameraType(0), 2);
    EXPECT_EQ(camera.MirvakDevice_GetCameraType(1), 1) << "the largest picture";
    ASSERT_EQ(start(a, collector), MIRVAK_OK);
    ASSERT_EQ(start(b, second), MIRVAK_OK);
    EXPECT_EQ(start(a, collector), MIRVAK_BUSY);
    EXPECT_TRUE(collector.waitForFrames(3));
    EXPECT_TRUE(second.waitForFrames(3));
    EXPECT_EQ(camera.MirvakDevs_Deinit(), MIRVAK_OK);
    const int frames = collector.frames() + second.frames();
    EXPECT_THAT(second.sizes(), ::testing::Each(cv::Size(100, 50)));
    EXPECT_EQ(camera.MirvakDevice_Release(a), MIRVAK_BAD_HANDLE);
    EXPECT_EQ(collector.frames() + second.frames(), frames);
}

TEST_F(DevicesFacade, ACallbackCannotReleaseItsOwnCamera)
{
    begin({"name = \"A\""});
    void* const device = camera.MirvakDevice_Create(0);
    std::atomic<int> released{MIRVAK_OK}, stopped{MIRVAK_OK};
    collector.onFrame = [&](mirvak::Image&) {
        released = camera.MirvakDevice_Release(device);
        stopped = camera.MirvakDevice_StopPreview(device);
    };
    ASSERT_EQ(start(device, collector), MIRVAK_OK);
    EXPECT_TRUE(collector.waitForFrames(3)) << "the stream goes on";
    EXPECT_EQ(camera.MirvakDevice_Release(device), MIRVAK_OK);
    EXPECT_EQ(released, MIRVAK_BUSY);
    EXPECT_EQ(stopped, MIRVAK_BUSY);
}

TEST_F(DevicesFacade, AnUnpluggedCameraIsBackAfterTheNextSearch)
{
    begin({"name = \"A\"; unplug_after = 0.05"});
    void* const device = camera.MirvakDevice_Create(0);
    ASSERT_EQ(start(device, collector), MIRVAK_OK);
    ASSERT_TRUE(collector.waitForEnd());
    EXPECT_EQ(camera.MirvakDevice_StopPreview(device), MIRVAK_OK);
    EXPECT_EQ(start(device, collector), MIRVAK_NO_DEVICE);
    EXPECT_EQ(camera.MirvakDevice_Release(device), MIRVAK_OK);
    EXPECT_FALSE(camera.MirvakDevice_Create(0));
    void* plugged = nullptr;
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    while (!plugged && std::chrono::steady_clock::now() < deadline) {
        camera.MirvakDevs_Refresh();
        std::this_thread::yield();
        plugged = camera.MirvakDevice_Create(0);
    }
    ASSERT_TRUE(plugged) << "it is back by itself";
    EXPECT_EQ(camera.MirvakDevice_Release(plugged), MIRVAK_OK);
    begin({"name = \"A\""}); // for good: a late thread would find it unplugged before its first frame
    FrameCollector again;
    void* const back = camera.MirvakDevice_Create(0);
    ASSERT_TRUE(back);
    ASSERT_EQ(start(back, again), MIRVAK_OK);
    EXPECT_TRUE(again.waitForFrames(1));
    EXPECT_EQ(camera.MirvakDevice_Release(back), MIRVAK_OK) << "releasing stops";
    EXPECT_EQ(collector.ends(), 1);
}

TEST_F(DevicesFacade, TheListFollowsTheDeskWhileACameraStreams)
{
    EXPECT_EQ(camera.MirvakDevs_Refresh(), MIRVAK_NO_DEVICE);
    begin({"name = \"A\"", "name = \"B\"; refused = true", "name = \"B\""});
    const auto identities = [&] {
        std::vector<std::string> all;
        for (int i = 0; i < camera.MirvakDevice_GetDevCount(); ++i)
            all.push_back(camera.MirvakDevice_GetDevIdentity(i));
        return all;
    };
    const auto before = identities();
    ASSERT_EQ(std::set<std::string>(before.begin(), before.end()).size(), 3U);
    EXPECT_EQ(camera.MirvakDevice_GetDevIdentity(3), "");
    EXPECT_FALSE(camera.MirvakDevice_Create(1));
    EXPECT_EQ(camera.MirvakDevice_GetCreateResult(), MIRVAK_NO_ACCESS);
    FrameCollector other;
    void* const a = camera.MirvakDevice_Create(0);
    void* const b = camera.MirvakDevice_Create(2);
    ASSERT_EQ(start(a, collector), MIRVAK_OK);
    ASSERT_EQ(start(b, other), MIRVAK_OK);

    std::atomic<int> changes{0};
    const MirvakDevsCallback count = [](void* context) { ++*static_cast<std::atomic<int>*>(context); };
    const auto listBecomes = [&](size_t size) {
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(30);
        do {
            const int seen = changes;
            camera.MirvakDevs_Refresh();
            while (changes == seen && identities().size() != size &&
                   std::chrono::steady_clock::now() < deadline)
                std::this_thread::yield();
        } while (identities().size() != size && std::chrono::steady_clock::now() < deadline);
        return identities().size() == size;
    };
    ASSERT_EQ(camera.MirvakDevs_Watch(count, &changes), MIRVAK_OK);
    folder.write("desk.cfg", "cameras = ( ");
    EXPECT_EQ(camera.MirvakDevs_Refresh(), MIRVAK_OK);
    EXPECT_EQ(identities(), before) << "what cannot be read changes nothing";
    lay({"name = \"C\"", "name = \"A\""}); // in front of the one that stays
    ASSERT_TRUE(listBecomes(2));
    EXPECT_EQ(identities()[1], before[0]);
    const auto isTold = [&](const std::vector<std::string>& cameras) {
        changes = 0;
        lay(cameras);
        for (const auto late = std::chrono::steady_clock::now() + std::chrono::seconds(30);
             changes == 0 && std::chrono::steady_clock::now() < late;)
            std::this_thread::yield();
        return changes > 0;
    };
    EXPECT_TRUE(isTold({"name = \"C\"; refused = true", "name = \"A\""}))
        << "who may open it is a part of the list";
    EXPECT_TRUE(other.waitForEnd()) << "it was unplugged";
    EXPECT_TRUE(collector.waitForFrames(collector.frames() + 3));
    EXPECT_EQ(collector.ends(), 0);

    EXPECT_EQ(camera.MirvakDevice_Release(a), MIRVAK_OK);
    EXPECT_EQ(camera.MirvakDevice_Release(b), MIRVAK_OK);
    ASSERT_EQ(camera.MirvakDevs_Init(), MIRVAK_OK);
    EXPECT_TRUE(isTold({"name = \"D\""})) << "the watch goes on with the new list";
    EXPECT_EQ(camera.MirvakDevs_Watch(nullptr, nullptr), MIRVAK_OK);
}

TEST_F(DevicesFacade, ThePaperSizeChangesInTheRunningStream)
{
    cv::Mat picture(cv::Size(200, 100), CV_8UC3, cv::Scalar(255, 0, 0));
    picture(cv::Rect(25, 10, 150, 80)).setTo(cv::Scalar(0, 255, 0));
    folder.write("framed.jpg", pictures::jpeg(picture));
    setenv("LUMRO_DESK",
           folder
               .write("desk.cfg",
                      "real = false; cameras = ({name = \"A\"; source = \"framed.jpg\"; fps = 100;});")
               .c_str(),
           1);
    ASSERT_EQ(camera.MirvakDevs_Init(), MIRVAK_OK);
    void* const device = camera.MirvakDevice_Create(0);
    std::promise<void> cropped, whole;
    enum class Wait { Cropped, Whole, Done } state = Wait::Cropped; // the capture thread's own
    collector.onFrame = [&](mirvak::Image& image) {
        ASSERT_EQ(image.pixels.size(), picture.size());
        const bool isCropped = image.pixels.at<cv::Vec3b>(2, 2)[1] > 200;
        if (state == Wait::Cropped && isCropped) {
            state = Wait::Whole;
            EXPECT_EQ(camera.MirvakDevice_SetCameraSize(device, 3), MIRVAK_OK) << "from the callback";
            cropped.set_value();
        } else if (state == Wait::Whole && !isCropped) {
            state = Wait::Done;
            whole.set_value();
        }
    };
    ASSERT_EQ(start(device, collector), MIRVAK_OK);
    ASSERT_TRUE(collector.waitForFrames(1));
    EXPECT_EQ(camera.MirvakDevice_SetCameraSize(device, 4), MIRVAK_OK);
    EXPECT_EQ(cropped.get_future().wait_for(std::chrono::seconds(30)), std::future_status::ready);
    EXPECT_EQ(whole.get_future().wait_for(std::chrono::seconds(30)), std::future_status::ready);
    mirvak::Image sheet; // it fills the picture
    sheet.pixels = cv::Mat(600, 800, CV_8UC3, cv::Scalar(60, 55, 50));
    sheet.pixels(cv::Rect(12, 9, 776, 582)).setTo(cv::Scalar(235, 235, 230));
    for (const auto& [present, result, wanted] : {std::tuple(4, MIRVAK_OK, 3), {3, MIRVAK_NOT_FOUND, 7}}) {
        int size = 7;
        EXPECT_EQ(camera.MirvakDevice_SetCameraSize(device, present), MIRVAK_OK);
        EXPECT_EQ(camera.MirvakDevice_JudgeCameraSize(device, &sheet, size, 0, 0.9), result);
        EXPECT_EQ(size, wanted);
    }
    camera.MirvakDevice_Release(device);
}

TEST_F(DevicesFacade, ThirtyLivesWhileStreaming)
{
    lay({"name = \"A\"; corrupt_every = 3"});
    for (int life = 0; life < 30; ++life) {
        MirvakCamera own;
        ASSERT_EQ(own.MirvakDevs_Init(), MIRVAK_OK);
        void* const device = own.MirvakDevice_Create(0);
        FrameCollector frames;
        ASSERT_EQ(own.MirvakDevice_StartPreview(device, 2, 0, 2, &onFrame, &frames), MIRVAK_OK);
        if (life % 2) {
            ASSERT_TRUE(frames.waitForFrames(1));
        }
        if (life % 5 == 0) {
            ASSERT_EQ(own.MirvakDevice_StopPreview(device), MIRVAK_OK);
        }
        own.MirvakDevs_Deinit();
    }
}

TEST_F(DevicesFacade, KeysOfTheDeskArriveAtTheFirstCallback)
{
    begin({"name = \"A\""}, "keys = { fifo = \"keys\"; };");
    std::promise<int> pressed;
    const MirvakKeyCallback desk = [](int key, void* context) {
        static_cast<std::promise<int>*>(context)->set_value(key);
    };
    const MirvakKeyCallback usb = [](int, void*) { ADD_FAILURE() << "no camera was touched"; };
    ASSERT_EQ(camera.MirvakHid_Init(desk, &pressed, usb, nullptr), MIRVAK_OK);
    folder.write("keys", "5\n");
    auto key = pressed.get_future();
    ASSERT_EQ(key.wait_for(std::chrono::seconds(30)), std::future_status::ready);
    EXPECT_EQ(key.get(), 5);
    EXPECT_EQ(camera.MirvakHid_Deinit(), MIRVAK_OK);
    EXPECT_EQ(camera.MirvakHid_Deinit(), MIRVAK_OK);
}
