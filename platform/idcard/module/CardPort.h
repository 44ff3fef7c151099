#pragma once

#include "CardFrame.h"
#include "ReaderConfig.h"
#include "UniqueFd.h"

namespace idcard {

/// The line to a card module. Nothing here waits, but for the transfer of a USB report.
class CardPort
{
public:
    /// Of a HID device: every report has so many bytes, the last one is filled with zeros.
    static constexpr size_t hidReportBytes = 64;

    /// Not open when there is no such device; `reason` then says why.
    static CardPort open(const ReaderConfig& reader, std::string& reason);
    CardPort() = default;
    /// @param reportBytes 0: a plain stream of bytes
    explicit CardPort(mirvak::UniqueFd fd, size_t reportBytes = 0)
        : fd_(std::move(fd)), reportBytes_(reportBytes)
    {
    }

    bool isOpen() const { return fd_.isValid(); }
    /// False when the device is gone, which closes the line.
    bool send(const Bytes& frame);
    /// What has come, at most a few kilobytes; nothing when the device is gone, which closes the line.
    Bytes receive();
    /// Returns when something has come, or after `milliseconds`.
    void wait(int milliseconds) const;

private:
    bool sendReports(const Bytes& frame);

    mirvak::UniqueFd fd_;
    size_t reportBytes_ = 0;
};

} // namespace idcard
