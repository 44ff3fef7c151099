#pragma once

#include <chrono>
#include <cstddef>
#include <functional>

/// Tells whole seconds since any fixed moment.
using SecondsClock = std::function<std::chrono::seconds()>;

/// When a timed operation ends. Coarse on purpose: it counts whole seconds, and lasts longer than the limit
/// rounded up to them, up to one second longer. Even a limit of 0 ms allows about a second of attempts.
class TimeLimit
{
public:
    /// Begins now. `clock` is borrowed.
    TimeLimit(const SecondsClock& clock, std::size_t timeoutMs)
        : clock_(clock), start_(clock()), limit_((timeoutMs + roundUp) / msOfSecond)
    {
    }

    bool isOver() const { return clock_() - start_ > limit_; }

private:
    static constexpr std::size_t msOfSecond = 1000, roundUp = msOfSecond - 1;

    const SecondsClock& clock_;
    const std::chrono::seconds start_, limit_;
};
