// Cameras that come and go, as a program of an ordinary user meets them: the device manager gives it the
// right to use them only after they have appeared.
#include "FrameCollector.h"
#include "LabCamera.h"
#include "waitFor.h"

#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>
#include <memory>

#include <grp.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

constexpr int compressed = 2, newestFrameOnly = 2;

LabCameraModel documentCamera()
{
    return {"1234abcd", "Lab Doc Camera", 0, {"640x480", "1600x1200"}};
}

LabCameraModel sideCamera()
{
    return {"1234abce", "Lab Side Camera", 1, {"640x480"}};
}

/// The rights of a user, who may belong to the group of cameras, for this thread until the end of the scope,
/// and for the threads that it starts meanwhile. (The C library's calls would change those of the whole
/// process.)
class AsUser
{
public:
    explicit AsUser(bool inGroup)
    {
        const gid_t video = getgrnam("video")->gr_gid;
        EXPECT_EQ(syscall(SYS_setgroups, inGroup ? 1 : 0, &video), 0);
        EXPECT_EQ(syscall(SYS_setresgid, -1, user, -1), 0);
        EXPECT_EQ(syscall(SYS_setresuid, -1, user, -1), 0);
    }
    ~AsUser()
    {
        EXPECT_EQ(syscall(SYS_setresuid, -1, 0, -1), 0);
        EXPECT_EQ(syscall(SYS_setresgid, -1, 0, -1), 0);
    }
    AsUser(const AsUser&) = delete;
    AsUser& operator=(const AsUser&) = delete;

private:
    static constexpr int user = 1000;
};

/// The library in the hands of that user, who keeps the list up to date.
class Desk
{
public:
    explicit Desk(bool inGroup = true) : inGroup_(inGroup)
    {
        const AsUser rights(inGroup_);
        EXPECT_EQ(devices.MirvakDevs_Init(), MIRVAK_OK);
        const auto note = [](void* changed) { *static_cast<std::atomic<bool>*>(changed) = true; };
        EXPECT_EQ(devices.MirvakDevs_Watch(note, &changed_), MIRVAK_OK);
    }
    ~Desk() { devices.MirvakDevs_Deinit(); }

    int indexOf(const LabCameraModel& model)
    {
        const AsUser rights(inGroup_);
        if (changed_.exchange(false)) {
            EXPECT_EQ(devices.MirvakDevs_Refresh(), MIRVAK_OK);
        }
        for (int i = 0; i < devices.MirvakDevice_GetDevCount(); ++i) {
            if (devices.MirvakDevice_GetDevUsbID(i) == model.usbId)
                return i;
        }
        return -1;
    }
    bool waitUntilListed(const LabCameraModel& model, bool listed = true)
    {
        return waitFor([&] { return (indexOf(model) >= 0) == listed; });
    }
    std::string identityOf(const LabCameraModel& model)
    {
        return devices.MirvakDevice_GetDevIdentity(indexOf(model));
    }
    void* open(const LabCameraModel& model)
    {
        const int index = indexOf(model);
        const AsUser rights(inGroup_);
        return devices.MirvakDevice_Create(index);
    }
    /// Tries until it works, as the program does.
    void* openAtLast(const LabCameraModel& model)
    {
        void* device = nullptr;
        EXPECT_TRUE(waitFor([&] { return (device = open(model)) != nullptr; }));
        return device;
    }
    int start(void* device, FrameCollector& frames)
    {
        const AsUser rights(inGroup_);
        return devices.MirvakDevice_StartPreview(
            device, compressed, 0, newestFrameOnly, FrameCollector::onFrame, &frames);
    }

    MirvakCamera devices;

private:
    const bool inGroup_;
    std::atomic<bool> changed_{false};
};

TEST(Cable, CamerasComeAndGoWhileOneStreams)
{
    Desk desk;
    EXPECT_EQ(desk.devices.MirvakDevice_GetDevCount(), 0);
    LabCamera side(sideCamera());
    ASSERT_TRUE(desk.waitUntilListed(sideCamera()));
    FrameCollector frames(desk.devices, 0), others(desk.devices, 0), again(desk.devices, 0);
    void* const device = desk.openAtLast(sideCamera());
    ASSERT_EQ(desk.start(device, frames), MIRVAK_OK);
    ASSERT_TRUE(frames.waitForFrames(2));

    auto document = std::make_unique<LabCamera>(documentCamera());
    ASSERT_TRUE(desk.waitUntilListed(documentCamera()));
    const std::string side_ = desk.identityOf(sideCamera()), document_ = desk.identityOf(documentCamera());
    EXPECT_NE(side_, document_);
    void* const other = desk.openAtLast(documentCamera());
    ASSERT_EQ(desk.start(other, others), MIRVAK_OK);
    ASSERT_TRUE(others.waitForFrames(2));

    const int index = desk.indexOf(documentCamera());
    document.reset();
    EXPECT_TRUE(others.waitForEnd());
    EXPECT_EQ(desk.devices.MirvakDevice_Create(index), nullptr) << "in the list, but no longer there";
    ASSERT_TRUE(desk.waitUntilListed(documentCamera(), false));
    EXPECT_EQ(desk.devices.MirvakDevice_Release(other), MIRVAK_OK);
    EXPECT_EQ(desk.identityOf(sideCamera()), side_);

    document = std::make_unique<LabCamera>(documentCamera());
    ASSERT_TRUE(desk.waitUntilListed(documentCamera()));
    EXPECT_EQ(desk.identityOf(documentCamera()), document_);
    void* const back = desk.openAtLast(documentCamera());
    ASSERT_EQ(desk.start(back, again), MIRVAK_OK);
    EXPECT_TRUE(again.waitForFrames(2));
    EXPECT_TRUE(frames.waitForFrames(20));
    EXPECT_EQ(frames.ends(), 0) << "the first stream ran on";
}

TEST(Cable, WhoMayNotOpenItOrIsTooLateIsToldSoAndCanTryAgain)
{
    Desk stranger(false), member;
    const LabCamera document(documentCamera());
    ASSERT_TRUE(stranger.waitUntilListed(documentCamera()));
    EXPECT_EQ(stranger.open(documentCamera()), nullptr);
    EXPECT_EQ(stranger.devices.MirvakDevice_GetCreateResult(), MIRVAK_NO_ACCESS);
    for (const auto& node : std::filesystem::directory_iterator("/dev")) {
        if (node.path().filename().string().rfind("video", 0) == 0)
            std::filesystem::permissions(node, std::filesystem::perms(0666));
    }
    void* const late = stranger.openAtLast(documentCamera());

    ASSERT_TRUE(member.waitUntilListed(documentCamera()));
    void* const early = member.openAtLast(documentCamera());
    FrameCollector frames(member.devices, 0), others(stranger.devices, 0);
    ASSERT_EQ(member.start(early, frames), MIRVAK_OK);
    EXPECT_EQ(stranger.start(late, others), MIRVAK_BUSY);
    EXPECT_TRUE(frames.waitForFrames(4));
    EXPECT_EQ(member.devices.MirvakDevice_Release(early), MIRVAK_OK);
    EXPECT_EQ(stranger.start(late, others), MIRVAK_OK);
    EXPECT_TRUE(others.waitForFrames(2));
}

TEST(Cable, TheCamerasZoomIsWideAgainAfterItWasClosed)
{
    Desk desk;
    LabCamera document(documentCamera());
    const std::string zoom = "control 1 11 "; // of the camera terminal
    ASSERT_TRUE(desk.waitUntilListed(documentCamera()));
    for (int time = 0; time < 2; ++time) {
        void* const device = desk.openAtLast(documentCamera());
        EXPECT_EQ(desk.devices.MirvakDevice_SetCameraSize(device, 4), MIRVAK_OK);
        EXPECT_EQ(document.waitForReport(zoom), zoom + "141"); // 100 is the widest view
        EXPECT_EQ(desk.devices.MirvakDevice_Release(device), MIRVAK_OK);
        EXPECT_EQ(document.waitForReport(zoom), zoom + "100");
    }
}

} // namespace
