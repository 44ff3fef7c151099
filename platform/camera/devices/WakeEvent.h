#pragma once

#include "UniqueFd.h"

#include <chrono>

namespace mirvak {

/// Wakes a thread that waits in poll(). Stays signalled until it is cleared. Thread-safe.
class WakeEvent
{
public:
    using Clock = std::chrono::steady_clock;

    /// Throws std::system_error when the process has no descriptor left.
    WakeEvent();

    void signal();
    void clear();
    bool isSignalled() const;
    /// Sleeps until the time has come or the event is signalled; true when it is signalled.
    bool waitUntil(Clock::time_point time) const;
    /// Readable while signalled.
    int fd() const { return fd_.get(); }

private:
    UniqueFd fd_;
};

} // namespace mirvak
