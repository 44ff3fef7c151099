#include "UsbSensor.h"

#include "FreshSignals.h"
#include "SpawnFiles.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <thread>

extern char** environ;

namespace mirvak {

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

constexpr milliseconds patienceAtTheEnd(400), pulse(5);

bool isReadable(int socket, milliseconds limit)
{
    pollfd waiting{socket, POLLIN, 0};
    return poll(&waiting, 1, static_cast<int>(limit.count())) > 0;
}

bool hasEnded(pid_t pid)
{
    return waitpid(pid, nullptr, WNOHANG) == pid;
}

} // namespace

UsbSensor::UsbSensor(const std::string& program, int number)
{
    if (!start(program, number)) {
        std::fprintf(stderr, "fingerprint: %s: %s\n", program.c_str(), std::strerror(errno));
        state_ = State::none;
    }
}

bool UsbSensor::start(const std::string& program, int number)
{
    int ends[2];
    if (socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends) != 0)
        return false;
    socket_ = UniqueFd(ends[0]);
    const UniqueFd end(ends[1]);
    const UniqueFd theirs(fcntl(end.get(), F_DUPFD_CLOEXEC, helper::socketFd + 1)); // not the one it becomes
    // Drivers have something to say.
    const SpawnFiles files({{theirs.get(), helper::socketFd}}, SpawnFiles::Errors::pass);
    const FreshSignals signals;
    std::string path = program, sensor = std::to_string(number);
    char* arguments[] = {path.data(), sensor.data(), nullptr};
    errno = posix_spawn(&pid_, path.c_str(), files.get(), signals.get(), arguments, environ);
    if (errno != 0)
        pid_ = -1;
    return errno == 0;
}

UsbSensor::~UsbSensor()
{
    socket_.reset();
    if (pid_ < 0)
        return;
    const Clock::time_point end = Clock::now() + patienceAtTheEnd;
    while (!hasEnded(pid_)) {
        if (Clock::now() >= end) {
            kill(pid_, SIGKILL);
            waitpid(pid_, nullptr, 0);
            return;
        }
        std::this_thread::sleep_for(pulse);
    }
}

FingerSensor::State UsbSensor::waitWhile(State state, milliseconds limit)
{
    const Clock::time_point end = Clock::now() + limit;
    milliseconds left(0); // what has come already is taken first
    while (state_ == State::opening || state_ == State::noFinger) {
        if (isReadable(socket_.get(), left)) {
            state_ = receive();
            left = milliseconds(0);
            continue;
        }
        left = std::chrono::ceil<milliseconds>(end - Clock::now());
        if (state_ != state || left <= milliseconds(0))
            break;
    }
    return state_;
}

FingerSensor::State UsbSensor::receive()
{
    helper::Message message = helper::Message::lost; // also of a program that has died
    FingerPixels pixels(static_cast<size_t>(fingerWidth) * fingerHeight);
    iovec parts[] = {{&message, sizeof message}, {pixels.data(), pixels.size()}};
    msghdr packet = {};
    packet.msg_iov = parts;
    packet.msg_iovlen = 2;
    const ssize_t length = recvmsg(socket_.get(), &packet, MSG_DONTWAIT);
    if (length < 0 && (errno == EAGAIN || errno == EINTR))
        return state_;
    switch (length > 0 ? message : helper::Message::lost) {
    case helper::Message::none:
        return State::none;
    case helper::Message::ready:
        return State::noFinger;
    case helper::Message::picture:
        if (static_cast<size_t>(length) != sizeof message + pixels.size())
            return State::lost;
        pixels_ = std::move(pixels);
        return State::finger;
    case helper::Message::lost:
        break;
    }
    return state_ == State::opening ? State::none : State::lost;
}

} // namespace mirvak
