// The snapshot button of a camera on the real driver, heard by root and by an ordinary user.
#include "FrameCollector.h"
#include "KeyUser.h"
#include "LabCamera.h"
#include "waitFor.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include <sys/stat.h>

namespace {

constexpr uid_t root = 0, nobody = 65534;

/// A camera that streams: its button speaks only while it is in use.
class CameraInUse
{
public:
    CameraInUse()
    {
        EXPECT_EQ(library_.MirvakDevs_Init(), MIRVAK_OK);
        void* device = library_.MirvakDevice_Create(0);
        EXPECT_EQ(library_.MirvakDevice_StartPreview(device, 2, 0, 2, FrameCollector::onFrame, &frames_),
                  MIRVAK_OK);
        EXPECT_TRUE(frames_.waitForFrames(1));
    }
    ~CameraInUse() { library_.MirvakDevs_Deinit(); }

    LabCamera camera{{"1234abcd", "Lab Doc Camera", 0, {"640x480"}}};

private:
    MirvakCamera library_;
    FrameCollector frames_{library_, 0};
};

std::string lineIn(const std::filesystem::path& file)
{
    std::string line;
    std::getline(std::ifstream(file), line);
    return line;
}

/// The input device of the lab's camera, once the device manager is done with it: it gives a new device its
/// rights, also over those that somebody gave before.
std::string buttonNode()
{
    for (const auto& entry : std::filesystem::directory_iterator("/sys/class/input")) {
        const std::string event = entry.path().filename();
        if (event.rfind("event", 0) != 0 ||
            lineIn(entry.path() / "device/name").rfind("Lab Doc Camera", 0) != 0)
            continue;
        const std::string known = "/run/udev/data/c" + lineIn(entry.path() / "dev");
        return waitFor([&] { return std::filesystem::exists(known); }) ? "/dev/input/" + event : "";
    }
    return {};
}

void expectPresses(LabCamera& camera, KeyUser& user)
{
    ASSERT_TRUE(waitFor([&] { return user.waitsForKeys(); }));
    for (int press = 1; press <= 3; ++press) {
        camera.pressButton();
        ASSERT_EQ(user.nextLine(), "key 2") << "press " << press;
    }
}

TEST(ButtonTest, IsTheCaptureKey)
{
    CameraInUse use;
    KeyUser user(root);
    expectPresses(use.camera, user);
}

// The session manager grants the rights after the device is there.
TEST(ButtonTest, IsHeardByAnOrdinaryUserOnceItMayBeReadAndAgainAfterAReplug)
{
    KeyUser user(nobody);
    for (int plug = 1; plug <= 2; ++plug) {
        CameraInUse use;
        const std::string node = buttonNode();
        ASSERT_EQ(user.nextLine(), "camera keys left out: " + node + ": Permission denied")
            << "plug " << plug;
        ASSERT_EQ(chmod(node.c_str(), 0644), 0);
        expectPresses(use.camera, user);
    }
}

} // namespace
