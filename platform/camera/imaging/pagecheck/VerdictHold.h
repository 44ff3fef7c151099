#pragma once

#include <array>
#include <chrono>
#include <cstddef>

namespace mirvak {

/// What may spoil a page, the worst first.
enum class Flaw { leavesPicture, moving, tooDark, tooBlurred, reflection, notSure };
constexpr size_t flawCount = 6;
using Flaws = std::array<bool, flawCount>;

/// What is to be said of the page before the camera.
struct Verdict
{
    enum class State { noPage, looking, good, flawed };
    State state = State::noPage;
    Flaw flaw = Flaw::notSure; ///< with State::flawed
};

/// Makes verdicts that can be read out of what single frames show: a flaw is told when it lasts, one at a
/// time, long enough to be read, and a page is good when it has had none for a while. One thread at a time.
class VerdictHold
{
public:
    using Time = std::chrono::steady_clock::time_point;

    /// `flaws` of the page in a frame taken at `taken`.
    Verdict seen(const Flaws& flaws, Time taken);
    /// No page is found in that frame. What was said stays for a moment, because one frame is no proof.
    Verdict missed(Time taken);
    void reset();

private:
    void weigh(const Flaws& flaws, Time taken);

    std::array<double, flawCount> certainty_{};
    std::array<bool, flawCount> present_{};
    Verdict verdict_;
    Time first_{}, lastSeen_{}, toldSince_{};
};

} // namespace mirvak
