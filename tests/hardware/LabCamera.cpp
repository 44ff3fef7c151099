#include "LabCamera.h"

#include "waitFor.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <utility>

namespace {

std::string picturesFolder()
{
    const char* folder = std::getenv("LUMRO_LAB_PICTURES");
    if (!folder)
        throw std::runtime_error("this test runs in the lab: scripts/hardware-test.sh");
    return folder;
}

} // namespace

LabCamera::LabCamera(LabCameraModel model) : model_(std::move(model))
{
    start();
    if (!waitFor([this] { return isThere(); })) {
        unplug();
        throw std::runtime_error("the camera " + model_.name + " does not appear");
    }
}

LabCamera::~LabCamera()
{
    unplug();
}

void LabCamera::start()
{
    int input[2], output[2];
    if (pipe2(input, O_CLOEXEC) != 0 || pipe2(output, O_CLOEXEC) != 0)
        throw std::runtime_error("no pipe");
    std::vector<std::string> words{LUMRO_LAB_CAMERA,
                                   model_.usbId.substr(0, 4),
                                   model_.usbId.substr(4),
                                   model_.name,
                                   std::to_string(model_.port),
                                   picturesFolder()};
    words.insert(words.end(), model_.sizes.begin(), model_.sizes.end());
    std::vector<char*> arguments;
    for (std::string& word : words)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, input[0], STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions, output[1], STDOUT_FILENO);
    const int failed = posix_spawn(&process_, LUMRO_LAB_CAMERA, &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    close(input[0]);
    close(output[1]);
    commands_ = input[1];
    reports_ = output[0];
    if (failed)
        throw std::runtime_error("cannot start " LUMRO_LAB_CAMERA);
}

// The link is made by the device manager, after the driver is done.
bool LabCamera::isThere() const
{
    std::string name = model_.name;
    std::replace(name.begin(), name.end(), ' ', '_');
    return std::filesystem::exists("/dev/v4l/by-id/usb-Lab_" + name + "_C000" + std::to_string(model_.port) +
                                   "-video-index0");
}

void LabCamera::unplug()
{
    if (process_ < 0)
        return;
    close(commands_); // the end of its input is the end of the camera
    close(reports_);
    waitpid(process_, nullptr, 0);
    process_ = -1;
    waitFor([this] { return !isThere(); });
}

void LabCamera::pressButton()
{
    const std::string line = "button\n";
    if (write(commands_, line.data(), line.size()) != ssize_t(line.size()))
        throw std::runtime_error("the camera does not listen");
}

std::string LabCamera::waitForReport(const std::string& beginning)
{
    const auto deadline = std::chrono::steady_clock::now() + patience;
    for (;;) {
        for (auto end = unread_.find('\n'); end != std::string::npos; end = unread_.find('\n')) {
            const std::string line = unread_.substr(0, end);
            unread_.erase(0, end + 1);
            if (line.rfind(beginning, 0) == 0)
                return line;
        }
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(
            deadline - std::chrono::steady_clock::now());
        pollfd readable{reports_, POLLIN, 0};
        char buffer[512];
        if (left.count() <= 0 || poll(&readable, 1, int(left.count())) <= 0)
            return {};
        const ssize_t count = read(reports_, buffer, sizeof buffer);
        if (count <= 0)
            return {};
        unread_.append(buffer, std::size_t(count));
    }
}
