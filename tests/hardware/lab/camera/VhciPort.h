#pragma once

#include "Setup.h"

#include <mutex>

namespace lab {

/// One request of the host: a transfer, or the wish to take an earlier transfer back.
struct Urb
{
    bool isUnlink = false;
    std::uint32_t sequence = 0;
    std::uint32_t unlinkSequence = 0; ///< of the transfer to take back
    int endpoint = 0;
    bool toHost = false;
    std::uint32_t length = 0; ///< bytes the host sends or has room for
    Setup setup{};            ///< endpoint 0 only
    Bytes data;               ///< from the host
};

/// A USB port of this machine whose other end is played by this process: one end of a socket pair is handed
/// to the kernel's vhci_hcd driver, which speaks USB/IP on it. Closing it unplugs the device.
/// Protocol: the kernel's Documentation/usb/usbip_protocol.rst. Needs root and the module vhci_hcd.
class VhciPort
{
public:
    /// Throws std::system_error when the driver refuses.
    explicit VhciPort(int number);
    ~VhciPort();
    VhciPort(const VhciPort&) = delete;
    VhciPort& operator=(const VhciPort&) = delete;

    /// Waits for the next request; nothing when the host has gone.
    std::optional<Urb> next();
    /// Ends a transfer to the host with this data. Thread-safe, as is the other.
    void send(const Urb& urb, const std::uint8_t* data, std::size_t size);
    /// Ends a transfer from the host, one that is refused or a wish (status is 0 or a negative errno).
    void finish(const Urb& urb, int status, std::uint32_t bytesTaken = 0);

private:
    bool readAll(void* data, std::size_t size);
    void reply(const Urb& urb, int status, std::uint32_t count, const std::uint8_t* data, std::size_t size);

    int socket_ = -1;
    std::mutex writing_;
};

} // namespace lab
