#include "WakeEvent.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <ctime>
#include <poll.h>
#include <sys/eventfd.h>
#include <system_error>

namespace mirvak {

WakeEvent::WakeEvent() : fd_(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK))
{
    if (!fd_.isValid())
        throw std::system_error(errno, std::generic_category(), "eventfd");
}

void WakeEvent::signal()
{
    const uint64_t one = 1;
    // Fails only when the counter is full, and then the event is signalled already.
    [[maybe_unused]] const ssize_t written = write(fd_.get(), &one, sizeof one);
}

void WakeEvent::clear()
{
    uint64_t count = 0;
    [[maybe_unused]] const ssize_t got = read(fd_.get(), &count, sizeof count);
}

bool WakeEvent::isSignalled() const
{
    return waitUntil(Clock::time_point::min());
}

bool WakeEvent::waitUntil(Clock::time_point time) const
{
    while (true) {
        const auto now = Clock::now();
        const auto left = time > now ? std::chrono::duration_cast<std::chrono::nanoseconds>(time - now)
                                     : std::chrono::nanoseconds(0);
        const timespec wait{static_cast<time_t>(left.count() / 1000000000),
                            static_cast<long>(left.count() % 1000000000)};
        pollfd entry{fd_.get(), POLLIN, 0};
        const int ready = ppoll(&entry, 1, &wait, nullptr);
        if (ready >= 0)
            return ready > 0;
        if (errno != EINTR)
            return true; // cannot wait any more: end the thread rather than spin
    }
}

} // namespace mirvak
