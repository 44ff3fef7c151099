#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace idcard {

/// Which reader is attached, and where.
struct ReaderConfig
{
    std::string port;      ///< a serial line; empty when `usb` is set
    std::string usb;       ///< 8 lowercase hexadecimal digits, vendor and product of a HID device
    int baud = 115200;     ///< of the serial line
    int foreignType = 2;   ///< the type as which cards of foreigners are told
    int residenceType = 1; ///< the same for residence cards

    std::string name() const { return port.empty() ? "USB " + usb : port; }

    /// Reads the file (libconfig). Nothing when there is none, or it is broken: that gets one line on
    /// standard error.
    static std::optional<ReaderConfig> load(const std::filesystem::path& path);
};

} // namespace idcard
