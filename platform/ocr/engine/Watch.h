#pragma once

#include <algorithm>
#include <atomic>

namespace mirvak {

/// What other threads see of a reading, and say to it.
struct Watch
{
    std::atomic<bool> stopped{false};
    std::atomic<int> percent{0};
};

/// The stretch of a reading's percents that one step takes. Cheap to copy; one thread moves it on.
class Stretch
{
public:
    Stretch() = default; ///< told nobody
    Stretch(Watch& watch, double from, double to) : watch_(&watch), from_(from), to_(to) {}

    /// So much of the step is done, 0 to 1; what lies behind is ignored.
    void reach(double share) const
    {
        if (watch_)
            watch_->percent = std::max<int>(watch_->percent, static_cast<int>(at(share)));
    }
    /// A part of this stretch.
    Stretch part(double from, double to) const
    {
        Stretch part = *this;
        part.from_ = at(from);
        part.to_ = at(to);
        return part;
    }

private:
    double at(double share) const { return from_ + std::clamp(share, 0.0, 1.0) * (to_ - from_); }

    Watch* watch_ = nullptr;
    double from_ = 0, to_ = 0;
};

} // namespace mirvak
