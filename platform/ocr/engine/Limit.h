#pragma once

#include <atomic>
#include <chrono>

namespace mirvak {

/// How long a reading may go on: until a moment, and while nobody has asked it to stop. Cheap to copy.
struct Limit
{
    using Clock = std::chrono::steady_clock;

    Clock::time_point deadline;
    const std::atomic<bool>* stopped = nullptr; ///< borrowed; may be set by another thread

    bool isOver() const { return (stopped && *stopped) || Clock::now() >= deadline; }
    /// The same stop with another deadline, from now on.
    Limit within(Clock::duration time) const { return {Clock::now() + time, stopped}; }
};

} // namespace mirvak
