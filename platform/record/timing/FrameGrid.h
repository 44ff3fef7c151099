#pragma once

#include <chrono>
#include <cstdint>

namespace mirvak {

/// The film's time, cut into equal slots from the start of the recording: slot k lasts from k / rate seconds
/// to (k + 1) / rate seconds.
class FrameGrid
{
public:
    using Time = std::chrono::nanoseconds; ///< since the start of the recording, not negative

    explicit FrameGrid(int framesPerSecond) : rate_(framesPerSecond) {}

    int slotsPerSecond() const { return rate_; }
    int64_t slotAt(Time time) const { return time.count() * rate_ / second; }
    /// The first moment of the next slot.
    Time endOf(int64_t slot) const { return Time(((slot + 1) * second + rate_ - 1) / rate_); }
    /// The time that so many slots take.
    Time lengthOf(int64_t slots) const { return Time(slots * second / rate_); }
    /// How many slots a film of this length fills, the last one perhaps in part; at least one.
    int64_t slotsIn(Time length) const { return length.count() > 0 ? slotAt(length - Time(1)) + 1 : 1; }

private:
    static constexpr int64_t second = 1'000'000'000;
    int rate_;
};

} // namespace mirvak
