#include "VhciPort.h"

#include <arpa/inet.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <fstream>
#include <system_error>

namespace lab {

namespace {

void attach(int number, int socket)
{
    constexpr int highSpeed = 3;
    std::ofstream file("/sys/devices/platform/vhci_hcd.0/attach");
    file << number << " " << socket << " " << 0x10000 + number + 1 << " " << highSpeed;
    file.flush();
    if (!file)
        throw std::system_error(errno, std::generic_category(), "vhci_hcd attach");
}

} // namespace

VhciPort::VhciPort(int number)
{
    int ends[2];
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0)
        throw std::system_error(errno, std::generic_category(), "socketpair");
    socket_ = ends[0];
    try {
        attach(number, ends[1]);
    } catch (...) {
        close(ends[0]);
        close(ends[1]);
        throw;
    }
    close(ends[1]);
}

VhciPort::~VhciPort()
{
    close(socket_);
}

bool VhciPort::readAll(void* data, std::size_t size)
{
    return size == 0 || recv(socket_, data, size, MSG_WAITALL) == ssize_t(size);
}

// A host that has gone is noticed by next(): what is still to be sent is dropped.
void VhciPort::reply(
    const Urb& urb, int status, std::uint32_t count, const std::uint8_t* data, std::size_t size)
{
    constexpr std::uint32_t submitReply = 3, unlinkReply = 4;
    std::array<std::uint32_t, 12> header{};
    header[0] = htonl(urb.isUnlink ? unlinkReply : submitReply);
    header[1] = htonl(urb.sequence);
    header[5] = htonl(std::uint32_t(status));
    header[6] = htonl(count);
    const auto* head = reinterpret_cast<const std::uint8_t*>(header.data());
    Bytes packet(head, head + sizeof header);
    packet.insert(packet.end(), data, data + size);
    const std::lock_guard lock(writing_);
    for (std::size_t at = 0; at < packet.size();) {
        const ssize_t sent = ::send(socket_, packet.data() + at, packet.size() - at, MSG_NOSIGNAL);
        if (sent <= 0)
            return;
        at += std::size_t(sent);
    }
}

void VhciPort::send(const Urb& urb, const std::uint8_t* data, std::size_t size)
{
    reply(urb, 0, std::uint32_t(size), data, size);
}

void VhciPort::finish(const Urb& urb, int status, std::uint32_t bytesTaken)
{
    reply(urb, status, bytesTaken, nullptr, 0);
}

std::optional<Urb> VhciPort::next()
{
    constexpr std::uint32_t unlinkRequest = 2;
    std::uint32_t header[12];
    if (!readAll(header, sizeof header))
        return std::nullopt;
    Urb urb;
    urb.isUnlink = ntohl(header[0]) == unlinkRequest;
    urb.sequence = ntohl(header[1]);
    urb.toHost = ntohl(header[3]) != 0;
    urb.endpoint = int(ntohl(header[4]));
    if (urb.isUnlink) {
        urb.unlinkSequence = ntohl(header[5]);
        return urb;
    }
    urb.length = ntohl(header[6]);
    const auto* setup = reinterpret_cast<const std::uint8_t*>(&header[10]);
    urb.setup = {
        setup[0], setup[1], std::uint16_t(setup[2] | setup[3] << 8), std::uint16_t(setup[4] | setup[5] << 8)};
    if (!urb.toHost)
        urb.data.resize(urb.length);
    if (!readAll(urb.data.data(), urb.data.size()))
        return std::nullopt;
    return urb;
}

} // namespace lab
