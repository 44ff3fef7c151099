#pragma once

#include <time.h>

#include <atomic>
#include <chrono>

namespace mirvak {

/// The time that the calling thread has computed. It stands still while the thread waits for a processor, so
/// a page is read as well on a busy machine as on an idle one, only later.
struct ComputingTime
{
    using duration = std::chrono::nanoseconds;
    using rep = duration::rep;
    using period = duration::period;
    using time_point = std::chrono::time_point<ComputingTime>;
    static constexpr bool is_steady = true;

    static time_point now() noexcept
    {
        timespec time{};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
        return time_point(std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec));
    }
};

/// How long a reading may go on: until it has computed for so long, and while nobody has asked it to stop.
/// Cheap to copy; made and asked on the one thread that reads.
struct Limit
{
    using Clock = ComputingTime;

    Clock::time_point deadline;
    const std::atomic<bool>* stopped = nullptr; ///< borrowed; may be set by another thread

    bool isOver() const { return (stopped && *stopped) || Clock::now() >= deadline; }
    /// The same stop with another deadline, from now on.
    Limit within(Clock::duration time) const { return {Clock::now() + time, stopped}; }
};

} // namespace mirvak
