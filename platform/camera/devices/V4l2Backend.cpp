#include "V4l2Backend.h"

#include "CameraName.h"
#include "UsbIdentity.h"
#include "V4l2Device.h"
#include "V4l2Ioctl.h"
#include "V4l2Modes.h"

#include <fcntl.h>
#include <linux/videodev2.h>

#include <algorithm>
#include <set>

namespace mirvak {
namespace {

namespace fs = std::filesystem;

/// Numbers of the nodes /dev/video<n>, ascending.
std::vector<int> nodeNumbers()
{
    std::vector<int> numbers;
    std::error_code failed;
    for (fs::directory_iterator entry("/dev", failed), end; !failed && entry != end;
         entry.increment(failed)) {
        int number = 0;
        char rest = 0;
        if (std::sscanf(entry->path().filename().c_str(), "video%d%c", &number, &rest) == 1)
            numbers.push_back(number);
    }
    std::sort(numbers.begin(), numbers.end());
    return numbers;
}

fs::path classFolder(const fs::path& node)
{
    return fs::path("/sys/class/video4linux") / node.filename();
}

UniqueFd openNode(const std::string& node)
{
    return UniqueFd(::open(node.c_str(), O_RDWR | O_NONBLOCK | O_CLOEXEC));
}

bool isCamera(int fd, v4l2_capability& capability)
{
    if (videoIoctl(fd, VIDIOC_QUERYCAP, &capability) != 0)
        return false;
    const bool perNode = capability.capabilities & V4L2_CAP_DEVICE_CAPS;
    const uint32_t can = perNode ? capability.device_caps : capability.capabilities;
    constexpr uint32_t needed = V4L2_CAP_VIDEO_CAPTURE | V4L2_CAP_STREAMING;
    return (can & needed) == needed;
}

std::string nameOf(const fs::path& node, const v4l2_capability& capability)
{
    const std::string name = firstLine(classFolder(node) / "name");
    return cameraName(name.empty() ? reinterpret_cast<const char*>(capability.card) : name);
}

/// Nothing for a node that is no camera of ours.
std::optional<CameraInfo> ask(const std::string& node)
{
    const UniqueFd fd = openNode(node);
    if (!fd.isValid()) {
        if (errno != ENODEV && errno != ENOENT)
            complain(node.c_str(), "open");
        return std::nullopt;
    }
    v4l2_capability capability{};
    if (!isCamera(fd.get(), capability))
        return std::nullopt;
    const std::vector<CameraMode> modes = listVideoModes(fd.get());
    if (modes.empty())
        return std::nullopt;
    CameraInfo camera;
    camera.name = nameOf(node, capability);
    camera.usbId = usbIdentityOf(classFolder(node) / "device").id;
    camera.address = node;
    camera.greyOnly =
        std::all_of(modes.begin(), modes.end(), [](const CameraMode& mode) { return isGrey(mode.format); });
    for (const CameraMode& mode : modes)
        camera.largestPixels =
            std::max(camera.largestPixels, static_cast<long long>(mode.width) * mode.height);
    return camera;
}

} // namespace

std::vector<CameraInfo> V4l2Backend::enumerate()
{
    std::vector<CameraInfo> cameras;
    std::set<std::pair<fs::path, bool>> seen; // USB interface, grey only
    for (const int number : nodeNumbers()) {
        auto camera = ask("/dev/video" + std::to_string(number));
        if (!camera)
            continue;
        std::error_code failed;
        const fs::path interface = fs::canonical(classFolder(camera->address) / "device", failed);
        const bool isUsb = !camera->usbId.empty() && !failed;
        if (!isUsb || seen.emplace(interface, camera->greyOnly).second)
            cameras.push_back(std::move(*camera));
    }
    return cameras;
}

std::unique_ptr<CameraDevice> V4l2Backend::open(const CameraInfo& camera)
{
    const std::string& node = camera.address;
    UniqueFd fd = openNode(node);
    if (!fd.isValid()) {
        complain(node.c_str(), "open");
        return nullptr;
    }
    // The node's number may have gone to another device since the list was made.
    const bool same = usbIdentityOf(classFolder(node) / "device").id == camera.usbId;
    std::vector<CameraMode> modes = same ? listVideoModes(fd.get()) : std::vector<CameraMode>();
    if (modes.empty()) {
        std::fprintf(stderr, "%s: the camera \"%s\" is no longer there\n", node.c_str(), camera.name.c_str());
        return nullptr;
    }
    return std::make_unique<V4l2Device>(node, std::move(fd), std::move(modes));
}

} // namespace mirvak
