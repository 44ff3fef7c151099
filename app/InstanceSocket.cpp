#include "InstanceSocket.h"

#include <QCryptographicHash>
#include <QSocketNotifier>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <thread>

using mirvak::UniqueFd;

namespace {

constexpr int waitingStarts = 16;
constexpr int bindAttempts = 50;
constexpr std::chrono::milliseconds bindPause(20);

UniqueFd makeSocket()
{
    return UniqueFd(socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
}

/// Anybody may open a name that lies in no folder.
bool isOwnUser(int fd)
{
    ucred peer{};
    socklen_t size = sizeof peer;
    return getsockopt(fd, SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0 && peer.uid == geteuid();
}

/// Calls bind() or connect() with the name.
template <class Call> int with(const QByteArray& name, Call&& call)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path + 1, name.constData(), size_t(name.size())); // behind the 0 of such names
    const auto size = socklen_t(offsetof(sockaddr_un, sun_path) + 1 + size_t(name.size()));
    return call(reinterpret_cast<const sockaddr*>(&address), size);
}

} // namespace

InstanceSocket::InstanceSocket(const QByteArray& name)
    : address_("lumro-" + QByteArray::number(geteuid()) + '-' +
               QCryptographicHash::hash(name, QCryptographicHash::Sha1).toHex())
{
}

InstanceSocket::Claim InstanceSocket::claim()
{
    // Between taking the name and listening an owner refuses connections, and so does one that just ends.
    for (int attempt = 0; attempt < bindAttempts; ++attempt) {
        if (bindName())
            return Claim::Ours;
        if (errno == EADDRINUSE)
            if (const Claim result = ask(); result == Claim::Taken)
                return result;
        if (errno != ECONNREFUSED)
            break;
        std::this_thread::sleep_for(bindPause);
    }
    std::fprintf(stderr, "start: no guard against a second instance (%s)\n", std::strerror(errno));
    return Claim::Unavailable;
}

bool InstanceSocket::bindName()
{
    listening_ = makeSocket();
    const int fd = listening_.get();
    if (with(address_, [fd](auto address, auto size) { return ::bind(fd, address, size); }) != 0 ||
        listen(fd, waitingStarts) != 0) {
        const int error = errno;
        listening_.reset();
        errno = error;
        return false;
    }
    auto* notifier = new QSocketNotifier(fd, QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, &InstanceSocket::answer);
    return true;
}

InstanceSocket::Claim InstanceSocket::ask()
{
    asking_ = makeSocket();
    const int fd = asking_.get();
    if (with(address_, [fd](auto address, auto size) { return ::connect(fd, address, size); }) == 0) {
        if (isOwnUser(fd))
            return Claim::Taken;
        errno = EADDRINUSE;
    } else if (errno == EAGAIN) {
        asking_.reset(); // it lives, but has not answered many starts before this one
        return Claim::Taken;
    }
    return Claim::Unavailable;
}

void InstanceSocket::release()
{
    qDeleteAll(findChildren<QSocketNotifier*>());
    listening_.reset();
}

InstanceSocket::Answer InstanceSocket::await(std::chrono::milliseconds patience) const
{
    pollfd answer{asking_.get(), POLLIN, 0};
    if (!asking_.isValid() || poll(&answer, 1, int(patience.count())) <= 0)
        return Answer::None;
    char byte = 0;
    return recv(asking_.get(), &byte, 1, 0) == 1 ? Answer::Forward : Answer::Ended;
}

void InstanceSocket::answer()
{
    for (;;) {
        const UniqueFd start(accept4(listening_.get(), nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC));
        if (!start.isValid())
            return;
        if (!isOwnUser(start.get()))
            continue;
        Q_EMIT asked();
        send(start.get(), "", 1, MSG_NOSIGNAL);
    }
}
