#include "CardPort.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <fstream>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

namespace idcard {
namespace {

namespace fs = std::filesystem;
using mirvak::UniqueFd;

constexpr size_t mostAtOnce = 4096;

std::string reasonOf(int error)
{
    char text[128];
    return strerror_r(error, text, sizeof text);
}

speed_t speedOf(int baud)
{
    constexpr struct
    {
        int baud;
        speed_t speed;
    } known[] = {{9600, B9600}, {19200, B19200}, {38400, B38400}, {57600, B57600}, {115200, B115200}};
    const auto* const found =
        std::find_if(std::begin(known), std::end(known), [&](const auto& one) { return one.baud == baud; });
    return found == std::end(known) ? B0 : found->speed;
}

/// 8 bits, no parity, nothing translated, no modem lines.
bool makeRaw(int fd, speed_t speed)
{
    termios line{};
    if (tcgetattr(fd, &line) != 0)
        return false;
    cfmakeraw(&line);
    line.c_cflag |= CLOCAL | CREAD;
    line.c_cflag &= ~static_cast<tcflag_t>(CSTOPB | CRTSCTS);
    cfsetspeed(&line, speed);
    return tcsetattr(fd, TCSANOW, &line) == 0 && tcflush(fd, TCIOFLUSH) == 0;
}

UniqueFd openNode(const fs::path& node, std::string& reason)
{
    UniqueFd fd(::open(node.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC));
    if (!fd.isValid())
        reason = reasonOf(errno);
    return fd;
}

UniqueFd openSerial(const ReaderConfig& reader, std::string& reason)
{
    const speed_t speed = speedOf(reader.baud);
    if (speed == B0) {
        reason = "baud must be 9600, 19200, 38400, 57600 or 115200";
        return UniqueFd();
    }
    UniqueFd fd = openNode(reader.port, reason);
    if (fd.isValid() && !makeRaw(fd.get(), speed)) {
        reason = "no serial line: " + reasonOf(errno);
        fd.reset();
    }
    return fd;
}

/// The node of the HID device of that id, as the kernel names it: bus, vendor and product, eight digits each.
fs::path hidNode(const std::string& usb)
{
    std::string upper = usb;
    std::transform(
        upper.begin(), upper.end(), upper.begin(), [](unsigned char c) { return std::toupper(c); });
    const std::string wanted = "HID_ID=0003:0000" + upper.substr(0, 4) + ":0000" + upper.substr(4);
    std::error_code none;
    for (const auto& entry : fs::directory_iterator("/sys/class/hidraw", none)) {
        std::ifstream properties(entry.path() / "device" / "uevent");
        for (std::string line; std::getline(properties, line);)
            if (line == wanted)
                return fs::path("/dev") / entry.path().filename();
    }
    return {};
}

UniqueFd openHid(const ReaderConfig& reader, std::string& reason)
{
    const fs::path node = hidNode(reader.usb);
    if (!node.empty())
        return openNode(node, reason);
    reason = "not attached";
    return UniqueFd();
}

bool mayComeLater(int error)
{
    return error == EAGAIN || error == EINTR;
}

} // namespace

CardPort CardPort::open(const ReaderConfig& reader, std::string& reason)
{
    return reader.port.empty() ? CardPort(openHid(reader, reason), hidReportBytes)
                               : CardPort(openSerial(reader, reason));
}

bool CardPort::send(const Bytes& frame)
{
    const bool isSent = reportBytes_ > 0 ? sendReports(frame)
                                         : ::write(fd_.get(), frame.data(), frame.size()) ==
                                               static_cast<ssize_t>(frame.size());
    if (!isSent)
        fd_.reset();
    return isSent;
}

/// Each report begins with its number, 0 where a device has but one kind.
bool CardPort::sendReports(const Bytes& frame)
{
    for (size_t at = 0; at < frame.size(); at += reportBytes_) {
        Bytes report(1 + reportBytes_);
        std::copy_n(frame.data() + at, std::min(reportBytes_, frame.size() - at), report.begin() + 1);
        if (::write(fd_.get(), report.data(), report.size()) != static_cast<ssize_t>(report.size()))
            return false;
    }
    return true;
}

Bytes CardPort::receive()
{
    Bytes received;
    Bytes piece(mostAtOnce);
    while (isOpen() && received.size() < mostAtOnce) {
        const ssize_t count = ::read(fd_.get(), piece.data(), piece.size());
        if (count < 0 && mayComeLater(errno))
            break;
        if (count <= 0)
            fd_.reset();
        else
            received.insert(received.end(), piece.begin(), piece.begin() + count);
    }
    return received;
}

void CardPort::wait(int milliseconds) const
{
    pollfd entry{fd_.get(), POLLIN, 0};
    ::poll(&entry, 1, milliseconds);
}

} // namespace idcard
