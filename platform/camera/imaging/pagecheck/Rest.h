#pragma once

#include "ShotLook.h"

#include <chrono>

namespace mirvak {

/// Whether what is seen of a page is at rest, by its corners and by its brightness from place to place. Light
/// that changes everywhere is no movement. Keeps its buffers; one thread at a time.
class Rest
{
public:
    using Time = std::chrono::steady_clock::time_point;
    /// `unsteady`: the outline is another one, though nothing has moved.
    enum class State { rests, moves, unsteady };

    /// Compares with the look of a third of a second ago.
    State judge(const ShotLook& look, Time taken);
    void reset() { has_ = false; }

private:
    State compare(const ShotLook& look);
    bool cornersMoved(const ShotLook& look) const;
    void remember(const ShotLook& look, Time taken);

    bool has_ = false;
    State last_ = State::rests;
    Time then_{};
    Outline page_;
    cv::Mat now_, before_, inPageBefore_, inPage_, difference_;
};

} // namespace mirvak
