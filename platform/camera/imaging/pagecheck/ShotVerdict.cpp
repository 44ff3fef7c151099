#include "ShotVerdict.h"

#include "ShotLight.h"
#include "Wholeness.h"

#include <algorithm>

namespace mirvak {

namespace {

constexpr std::chrono::seconds longPause{1};
constexpr double sureOutline = 0.7; // from here on outlines are mostly right
constexpr double holding = 0.85;    // what is told stays until it is clearly over
constexpr unsigned round = 4; // frames in which everything is looked at once: the budget of a frame is small

} // namespace

Verdict ShotVerdict::judge(const cv::Mat& rgb, const std::optional<Outline>& page, Time taken, bool mayLeave)
{
    if (rgb.size() != size_ || taken - last_ > longPause) {
        hold_.reset();
        rest_.reset();
        flaws_ = {};
        frame_ = 0;
    }
    size_ = rgb.size();
    last_ = taken;
    if (!page && !mayLeave)
        return hold_.missed(taken);
    if (page) {
        flaws_ = flawsOf(rgb, *page, taken);
    } else {
        flaws_ = {};
        flaws_[static_cast<size_t>(Flaw::leavesPicture)] = true;
    }
    return hold_.seen(flaws_, taken);
}

Flaws ShotVerdict::flawsOf(const cv::Mat& rgb, const Outline& page, Time taken)
{
    look_.build(rgb, page);
    Flaws flaws = flaws_;
    const auto set = [&flaws](Flaw flaw, bool on) { flaws[static_cast<size_t>(flaw)] = on; };
    const auto was = [&flaws](Flaw flaw) { return flaws[static_cast<size_t>(flaw)]; };
    const bool isSure = page.confidence >= sureOutline;
    const Wholeness wholeness = wholenessOf(rgb, page);
    const Rest::State rest = rest_.judge(look_, taken);
    set(Flaw::notSure, !isSure || wholeness == Wholeness::doubtful || rest == Rest::State::unsteady);
    set(Flaw::leavesPicture, isSure && wholeness == Wholeness::leavesPicture);
    set(Flaw::moving, rest == Rest::State::moves);
    const unsigned turn = frame_++ % round;
    if (turn == 0) {
        noise_ = noiseOf(look_);
        set(Flaw::tooDark, isTooDark(look_, noise_, was(Flaw::tooDark)));
    } else if (turn == 1) {
        set(Flaw::reflection, reflection_.isOn(look_));
    } else if (turn == 2) {
        const double limit = blurLimit(look_.longestSide()) * (was(Flaw::tooBlurred) ? holding : 1);
        set(Flaw::tooBlurred, sharpness_.measure(look_, noise_).value_or(0) > limit);
    }
    return flaws;
}

} // namespace mirvak
