#pragma once

#include <filesystem>
#include <string>

namespace mirvak {

/// What sysfs says of the USB device that an interface belongs to.
struct UsbIdentity
{
    std::string id;                   ///< vendor and product, 8 lowercase hexadecimal digits
    std::filesystem::path devicePath; ///< the USB device's own folder
};

/// Walks up from a device's folder (for example /sys/class/video4linux/video0/device) to the nearest USB
/// device. Both members are empty when there is none.
UsbIdentity usbIdentityOf(const std::filesystem::path& deviceFolder);

/// First line of a small file, without the line's end; empty when it cannot be read.
std::string firstLine(const std::filesystem::path& file);

} // namespace mirvak
