#include "SelectIOBase_linux.h"

#include <cerrno>
#include <sys/select.h>
#include <sys/time.h>
#include <thread>

namespace {

constexpr std::size_t lastWordsMs = 1000;
constexpr std::chrono::microseconds moment(10000);

enum class Wait { Read, Write };

timeval toTimeval(std::size_t ms)
{
    return {static_cast<time_t>(ms / 1000), static_cast<suseconds_t>(ms % 1000 * 1000)};
}

/// `left` is what remains of the time, as this system's select() leaves it there.
/// @return 1 when it is ready, 0 when it was not in time, -1 when it cannot be waited for
int waitUntilReady(int fd, Wait wait, timeval& left)
{
    int ready = 0;
    do {
        fd_set set;
        FD_ZERO(&set);
        FD_SET(fd, &set);
        ready = wait == Wait::Read ? select(fd + 1, &set, nullptr, nullptr, &left)
                                   : select(fd + 1, nullptr, &set, nullptr, &left);
    } while (ready < 0 && errno == EINTR);
    return ready;
}

bool wantsAnotherTry(ssize_t count)
{
    return count < 0 && (errno == EINTR || errno == EAGAIN);
}

/// Waits a moment of the time that is left. @return false when there is none
bool rest(timeval& left)
{
    const timeval step{0, moment.count()};
    if (timercmp(&left, &step, <))
        return false;
    timersub(&left, &step, &left);
    std::this_thread::sleep_for(moment);
    return true;
}

/// Waits, then calls `transfer`, and again when a signal came or the device was not ready after all.
template <class Transfer> int whenReady(int fd, Wait wait, std::size_t timeoutMs, Transfer transfer)
{
    timeval left = toTimeval(timeoutMs);
    for (;;) {
        const int ready = waitUntilReady(fd, wait, left);
        if (ready <= 0)
            return ready;
        const ssize_t count = transfer();
        if (!wantsAnotherTry(count))
            return static_cast<int>(count);
        if (!rest(left))
            return 0;
    }
}

} // namespace

SelectIOBase_linux::~SelectIOBase_linux()
{
    SelectIOBase_linux::Close();
}

bool SelectIOBase_linux::adopt(mirvak::UniqueFd fd)
{
    Close();
    if (fd.isValid() && fd.get() < FD_SETSIZE)
        fd_ = std::move(fd);
    return fd_.isValid();
}

void SelectIOBase_linux::Close()
{
    if (!fd_.isValid())
        return;
    // The kernel's printer driver throws away what is still on its way when the device is closed. It is ready
    // for more when it has nothing on its way.
    timeval left = toTimeval(lastWordsMs);
    waitUntilReady(fd_.get(), Wait::Write, left);
    fd_.reset();
}

int SelectIOBase_linux::BaseWrite(const std::uint8_t* buf, std::size_t len, std::size_t timeoutMs)
{
    if (!fd_.isValid())
        return nzio::notOpen;
    return whenReady(fd_.get(), Wait::Write, timeoutMs, [&] { return write(fd_.get(), buf, len); });
}

int SelectIOBase_linux::BaseReadAvailable(std::uint8_t* buf, std::size_t len, std::size_t timeoutMs)
{
    if (!fd_.isValid())
        return nzio::notOpen;
    const int count = whenReady(fd_.get(), Wait::Read, timeoutMs, [&] { return read(fd_.get(), buf, len); });
    // Printers answer with nothing, at once, while they have nothing to say, and so does a terminal whose
    // other end is gone. Whoever asks again and again must not keep a processor busy.
    if (count <= 0)
        std::this_thread::sleep_for(moment);
    return count;
}
