#include "LabCamera.h"

#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <utility>

LabCamera::LabCamera(LabCameraModel model) : model_(std::move(model))
{
    const char* pictures = std::getenv("LUMRO_LAB_PICTURES");
    int ends[2];
    if (!pictures || socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0)
        throw std::runtime_error("this test runs in the lab: scripts/hardware-test.sh");
    std::vector<std::string> words{LUMRO_LAB_CAMERA,
                                   model_.usbId.substr(0, 4),
                                   model_.usbId.substr(4),
                                   model_.name,
                                   std::to_string(model_.port),
                                   pictures};
    words.insert(words.end(), model_.sizes.begin(), model_.sizes.end());
    std::vector<char*> arguments;
    for (std::string& word : words)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);
    process_ = fork();
    if (process_ == 0) {
        dup2(ends[1], STDIN_FILENO);
        dup2(ends[1], STDOUT_FILENO);
        execv(LUMRO_LAB_CAMERA, arguments.data());
        _exit(127);
    }
    close(ends[1]);
    socket_ = ends[0];
    reports_ = Lines(socket_);
    if (!waitFor([this] { return isThere(); })) {
        unplug();
        throw std::runtime_error("the camera " + model_.name + " does not appear");
    }
}

LabCamera::~LabCamera()
{
    unplug();
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
    close(socket_); // the end of its input is the end of the camera
    waitpid(process_, nullptr, 0);
    process_ = -1;
    waitFor([this] { return !isThere(); });
}

void LabCamera::pressButton()
{
    if (send(socket_, "button\n", 7, MSG_NOSIGNAL) != 7)
        throw std::runtime_error("the camera does not listen");
}

std::string LabCamera::waitForReport(const std::string& beginning)
{
    std::string line;
    do
        line = reports_.next();
    while (!line.empty() && line.rfind(beginning, 0) != 0);
    return line;
}
