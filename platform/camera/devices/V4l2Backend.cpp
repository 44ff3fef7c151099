#include "V4l2Backend.h"

#include "CameraName.h"
#include "UsbIdentity.h"
#include "V4l2Device.h"
#include "V4l2Ioctl.h"
#include "V4l2Modes.h"

#include <fcntl.h>
#include <linux/videodev2.h>
#include <sys/stat.h>

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

bool isSameTime(const timespec& a, const timespec& b)
{
    return a.tv_sec == b.tv_sec && a.tv_nsec == b.tv_nsec;
}

std::string pathOf(int number)
{
    return "/dev/video" + std::to_string(number);
}

/// The folder of the interface or the bus device that the node belongs to.
fs::path interfaceOf(const fs::path& node)
{
    std::error_code failed;
    return fs::canonical(classFolder(node) / "device", failed);
}

/// What sysfs says, with or without the right to open the node.
CameraIdentities::Facts factsOf(const fs::path& node)
{
    const UsbIdentity usb = usbIdentityOf(classFolder(node) / "device");
    const std::string interface = interfaceOf(node).filename().string(); // as "1-4:1.0"
    if (usb.id.empty())
        return {"", "", node.filename().string(), interface};
    return {usb.id,
            firstLine(usb.devicePath / "serial"),
            usb.devicePath.filename().string(),
            interface.substr(interface.find(':') + 1)};
}

/// A node that may not be opened: the first one of a USB interface is the camera's, others tell of its
/// frames.
std::optional<CameraInfo> refusedCamera(const std::string& node, const CameraIdentities::Facts& facts)
{
    if (facts.usbId.empty() || firstLine(classFolder(node) / "index") != "0")
        return std::nullopt;
    CameraInfo camera;
    camera.name = nameOf(node, {});
    camera.refused = true;
    return camera;
}

/// Nothing for a node that is no camera of ours.
std::optional<CameraInfo> askOpenNode(int fd, const std::string& node)
{
    v4l2_capability capability{};
    if (!isCamera(fd, capability))
        return std::nullopt;
    const std::vector<CameraMode> modes = listVideoModes(fd);
    if (modes.empty())
        return std::nullopt;
    CameraInfo camera;
    camera.name = nameOf(node, capability);
    camera.greyOnly =
        std::all_of(modes.begin(), modes.end(), [](const CameraMode& mode) { return isGrey(mode.format); });
    for (const CameraMode& mode : modes)
        camera.largestPixels =
            std::max(camera.largestPixels, static_cast<long long>(mode.width) * mode.height);
    return camera;
}

} // namespace

void V4l2Backend::ask(const std::string& path, Node& node)
{
    const bool isFirstTime = node.facts.port.empty();
    node.facts = factsOf(path);
    const UniqueFd fd = openNode(path);
    const bool isRefused = !fd.isValid() && (errno == EACCES || errno == EPERM);
    node.isCertain = fd.isValid() || isRefused;
    // A new node is refused until the device manager has seen to it; who opens it is told.
    if (!node.isCertain && isFirstTime && errno != ENODEV && errno != ENOENT)
        complain(path.c_str(), "open");
    node.camera = isRefused      ? refusedCamera(path, node.facts)
                  : fd.isValid() ? askOpenNode(fd.get(), path)
                                 : std::nullopt;
    if (!node.camera)
        return;
    node.camera->usbId = node.facts.usbId;
    node.camera->address = path + "#" + std::to_string(node.number);
    if (node.camera->greyOnly)
        node.facts.function += "/grey";
}

void V4l2Backend::look()
{
    const std::vector<int> numbers = nodeNumbers();
    for (auto known = nodes_.begin(); known != nodes_.end();) {
        const bool isThere = std::binary_search(numbers.begin(), numbers.end(), known->first);
        known = isThere ? std::next(known) : nodes_.erase(known);
    }
    for (const int number : numbers) {
        struct stat status = {};
        if (stat(pathOf(number).c_str(), &status) != 0)
            continue;
        Node& node = nodes_[number];
        if (node.number != status.st_ino || !isSameTime(node.changed, status.st_ctim))
            node = {status.st_ino, status.st_ctim, std::nullopt, {}, false};
        if (!node.isCertain)
            ask(pathOf(number), node);
    }
}

std::vector<CameraInfo> V4l2Backend::enumerate()
{
    look();
    std::vector<CameraInfo> cameras;
    std::vector<CameraIdentities::Facts> facts;
    std::set<std::pair<std::string, std::string>> seen; // device and function
    for (const auto& [number, node] : nodes_) {
        const bool isUsb = !node.facts.usbId.empty();
        if (!node.camera || (isUsb && !seen.emplace(node.facts.port, node.facts.function).second))
            continue;
        cameras.push_back(*node.camera);
        facts.push_back(node.facts);
    }
    const std::vector<std::string> names = identities_.name(facts);
    for (size_t i = 0; i < cameras.size(); ++i)
        cameras[i].identity = names[i];
    return cameras;
}

std::unique_ptr<CameraDevice> V4l2Backend::open(const CameraInfo& camera, MirvakResult& why)
{
    const std::string node = camera.address.substr(0, camera.address.rfind('#'));
    UniqueFd fd = openNode(node);
    if (!fd.isValid()) {
        why = errno == EACCES || errno == EPERM ? MIRVAK_NO_ACCESS
              : errno == EBUSY                  ? MIRVAK_BUSY
                                                : MIRVAK_NO_DEVICE;
        complain(node.c_str(), "open");
        return nullptr;
    }
    why = MIRVAK_NO_DEVICE;
    // The node's name may have gone to another device since the list was made.
    struct stat status = {};
    const bool same =
        fstat(fd.get(), &status) == 0 && camera.address == node + "#" + std::to_string(status.st_ino);
    std::vector<CameraMode> modes = same ? listVideoModes(fd.get()) : std::vector<CameraMode>();
    if (modes.empty()) {
        std::fprintf(stderr, "%s: the camera \"%s\" is no longer there\n", node.c_str(), camera.name.c_str());
        return nullptr;
    }
    return std::make_unique<V4l2Device>(node, std::move(fd), std::move(modes));
}

} // namespace mirvak
