#include "CameraKeys.h"

#include "InputDevice.h"

#include <libudev.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <map>
#include <set>
#include <string>
#include <sys/inotify.h>
#include <unistd.h>

namespace mirvak {
namespace {

template <auto Release> struct ReleaseWith
{
    template <class T> void operator()(T* object) const { Release(object); }
};
template <class T, auto Release> using Handle = std::unique_ptr<T, ReleaseWith<Release>>;
using Udev = Handle<udev, &udev_unref>;
using Monitor = Handle<udev_monitor, &udev_monitor_unref>;
using Enumeration = Handle<udev_enumerate, &udev_enumerate_unref>;
using Device = Handle<udev_device, &udev_device_unref>;

Monitor openMonitor(udev* context)
{
    // The daemon announces a device once its rules have run. Without the daemon only the kernel speaks.
    const bool daemonRuns = access("/run/udev/control", F_OK) == 0;
    Monitor monitor(udev_monitor_new_from_netlink(context, daemonRuns ? "udev" : "kernel"));
    if (!monitor)
        return nullptr;
    for (const char* subsystem : {"input", "video4linux"}) {
        if (udev_monitor_filter_add_match_subsystem_devtype(monitor.get(), subsystem, nullptr) < 0)
            return nullptr;
    }
    return udev_monitor_enable_receiving(monitor.get()) < 0 ? nullptr : std::move(monitor);
}

void drain(int fd)
{
    char buffer[4096];
    while (read(fd, buffer, sizeof buffer) > 0) {
    }
}

/// Calls `visit` for each device of the subsystem whose name matches.
template <class Visit> void forEach(udev* context, const char* subsystem, const char* name, Visit&& visit)
{
    const Enumeration list(udev_enumerate_new(context));
    if (!list || udev_enumerate_add_match_subsystem(list.get(), subsystem) < 0 ||
        udev_enumerate_add_match_sysname(list.get(), name) < 0 || udev_enumerate_scan_devices(list.get()) < 0)
        return;
    udev_list_entry* entry = nullptr;
    udev_list_entry_foreach(entry, udev_enumerate_get_list_entry(list.get()))
    {
        const Device device(udev_device_new_from_syspath(context, udev_list_entry_get_name(entry)));
        if (device)
            visit(device.get());
    }
}

/// The USB device that carries it; empty off the USB.
std::string usbDeviceOf(udev_device* device)
{
    udev_device* const usb = udev_device_get_parent_with_subsystem_devtype(device, "usb", "usb_device");
    return usb ? udev_device_get_syspath(usb) : std::string();
}

} // namespace

struct CameraKeys::Parts
{
    Udev context;
    Monitor monitor;
    // The session manager grants rights after the device is there, and again when the user comes back to the
    // screen; of the latter udev says nothing.
    UniqueFd rights{inotify_init1(IN_NONBLOCK | IN_CLOEXEC)};
    std::map<std::string, InputDevice> inputs; // by node
    std::set<std::string> refused;             // nodes that could not be opened so far

    void open(const std::string& node);
};

void CameraKeys::Parts::open(const std::string& node)
{
    InputDevice input(node);
    if (input.isValid()) {
        inputs.emplace(node, std::move(input));
        refused.erase(node);
    } else if (input.error() != ENODEV && input.error() != ENOENT && refused.insert(node).second) {
        std::fprintf(stderr, "camera keys left out: %s: %s\n", node.c_str(), std::strerror(input.error()));
    }
}

std::unique_ptr<CameraKeys> CameraKeys::create()
{
    auto parts = std::make_unique<Parts>();
    parts->context.reset(udev_new());
    if (parts->context)
        parts->monitor = openMonitor(parts->context.get());
    if (!parts->monitor)
        return nullptr;
    return std::unique_ptr<CameraKeys>(new CameraKeys(std::move(parts)));
}

CameraKeys::CameraKeys(std::unique_ptr<Parts> parts) : parts_(std::move(parts)) {}

CameraKeys::~CameraKeys() = default;

void CameraKeys::rescan()
{
    // Anew each time: the folder comes and goes with the machine's first and last input device.
    inotify_add_watch(parts_->rights.get(), "/dev/input", IN_ATTRIB);
    udev* const context = parts_->context.get();
    std::set<std::string> cameras;
    forEach(
        context, "video4linux", "video*", [&](udev_device* video) { cameras.insert(usbDeviceOf(video)); });
    cameras.erase(std::string());

    std::set<std::string> present;
    forEach(context, "input", "event*", [&](udev_device* input) {
        const char* node = udev_device_get_devnode(input);
        if (node && cameras.count(usbDeviceOf(input)) > 0)
            present.insert(node);
    });
    for (auto input = parts_->inputs.begin(); input != parts_->inputs.end();)
        input = present.count(input->first) > 0 ? std::next(input) : parts_->inputs.erase(input);
    for (auto node = parts_->refused.begin(); node != parts_->refused.end();)
        node = present.count(*node) > 0 ? std::next(node) : parts_->refused.erase(node);
    for (const std::string& node : present)
        if (parts_->inputs.count(node) == 0)
            parts_->open(node);
}

void CameraKeys::addTo(std::vector<pollfd>& entries) const
{
    entries.push_back({udev_monitor_get_fd(parts_->monitor.get()), POLLIN, 0});
    entries.push_back({parts_->rights.get(), POLLIN, 0});
    for (const auto& [node, input] : parts_->inputs)
        entries.push_back({input.fd(), POLLIN, 0});
}

void CameraKeys::handle(const pollfd* entries, const std::function<void(int)>& press)
{
    bool changed = entries[0].revents != 0 || entries[1].revents != 0;
    entries += 2;
    for (auto input = parts_->inputs.begin(); input != parts_->inputs.end(); ++entries) {
        const bool gone = entries->revents != 0 && !input->second.read(press);
        input = gone ? parts_->inputs.erase(input) : std::next(input);
        changed = changed || gone; // the next camera may have come under the same name before this one went
    }
    if (!changed)
        return;
    while (const Device news{udev_monitor_receive_device(parts_->monitor.get())}) {
    }
    drain(parts_->rights.get());
    rescan();
}

} // namespace mirvak
