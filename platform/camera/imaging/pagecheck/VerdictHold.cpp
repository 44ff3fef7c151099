#include "VerdictHold.h"

#include <algorithm>
#include <cmath>

namespace mirvak {

namespace {

using std::chrono::duration;
using std::chrono::milliseconds;

constexpr milliseconds patience{500};  // without an outline
constexpr milliseconds readable{1500}; // a few words, at a glance
constexpr milliseconds firstLook{400}; // after a page has come
constexpr double memory = 0.25;        // seconds until a flaw that begins or ends counts by two thirds
constexpr double longestStep = 0.1;    // seconds: a frame after a pause is one frame
constexpr double comes = 0.65, goes = 0.3;

} // namespace

void VerdictHold::reset()
{
    certainty_ = {};
    present_ = {};
    verdict_ = {};
}

void VerdictHold::weigh(const Flaws& flaws, Time taken)
{
    const double step = std::clamp(duration<double>(taken - lastSeen_).count(), 0.0, longestStep);
    const double weight = 1 - std::exp(-step / memory);
    for (size_t i = 0; i < flawCount; ++i) {
        certainty_[i] += weight * ((flaws[i] ? 1 : 0) - certainty_[i]);
        present_[i] = certainty_[i] > (present_[i] ? goes : comes);
    }
}

Verdict VerdictHold::seen(const Flaws& flaws, Time taken)
{
    if (verdict_.state == Verdict::State::noPage) {
        reset();
        first_ = lastSeen_ = taken;
        verdict_.state = Verdict::State::looking;
        return verdict_;
    }
    weigh(flaws, taken);
    lastSeen_ = taken;
    const bool isTold = verdict_.state == Verdict::State::flawed;
    if (taken - first_ < firstLook || (isTold && taken - toldSince_ < readable))
        return verdict_;
    const auto worst = std::find(present_.begin(), present_.end(), true);
    if (worst != present_.end()) {
        const auto flaw = static_cast<Flaw>(worst - present_.begin());
        if (!isTold || flaw != verdict_.flaw)
            toldSince_ = taken;
        verdict_ = {Verdict::State::flawed, flaw};
    } else if (verdict_.state != Verdict::State::good) {
        const bool isClean = *std::max_element(certainty_.begin(), certainty_.end()) <= goes;
        verdict_.state = isClean ? Verdict::State::good : Verdict::State::looking;
    }
    return verdict_;
}

Verdict VerdictHold::missed(Time taken)
{
    if (verdict_.state != Verdict::State::noPage && taken - lastSeen_ > patience)
        reset();
    return verdict_;
}

} // namespace mirvak
