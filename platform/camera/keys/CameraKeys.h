#pragma once

#include <functional>
#include <memory>
#include <poll.h>
#include <vector>

namespace mirvak {

/// The keys on the cameras themselves: the input devices that sit on the same USB device as a video device.
/// Follows plugging and unplugging. A device that may not be read is named on standard error and opened as
/// soon as its rights allow it. One thread at a time.
class CameraKeys
{
public:
    /// Null without udev, which tells of the devices.
    static std::unique_ptr<CameraKeys> create();
    ~CameraKeys();

    /// Looks for the input devices of all cameras; those that are open stay open.
    void rescan();
    /// Adds what has to be polled. The order holds until the next handle() or rescan().
    void addTo(std::vector<pollfd>& entries) const;
    /// Reports each press of a key in the entries that are ready; `entries` starts with what addTo() added.
    /// Keys held down are not repeated.
    void handle(const pollfd* entries, const std::function<void(int)>& press);

private:
    struct Parts;
    explicit CameraKeys(std::unique_ptr<Parts> parts);
    std::unique_ptr<Parts> parts_;
};

} // namespace mirvak
