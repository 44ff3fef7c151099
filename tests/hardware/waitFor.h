#pragma once

#include <chrono>
#include <thread>

/// The lab's processor is emulated and up to eighty times slower than this one.
inline constexpr std::chrono::seconds patience{60};

/// Asks until the condition holds; false when the patience is at its end.
template <class Condition> bool waitFor(Condition condition)
{
    const auto deadline = std::chrono::steady_clock::now() + patience;
    while (!condition()) {
        const auto now = std::chrono::steady_clock::now();
        if (now > deadline)
            return false;
        std::this_thread::sleep_until(now + std::chrono::milliseconds(20));
    }
    return true;
}
