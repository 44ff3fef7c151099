#include "PageCheck.h"

#include <algorithm>

namespace mirvak {

namespace {

using std::chrono::milliseconds;

constexpr int reducedSide = 640;            // words on an A4 page that fills the picture stay apart
constexpr milliseconds restTime{300};       // between the first and the last of the looks that are alike
constexpr milliseconds lostTrack{3000};     // two looks farther apart say nothing about what happened between
constexpr milliseconds handPatience{1500};  // then what looks like a hand on a new page belongs to the page
constexpr milliseconds focusPatience{2000}; // then the lens has found no better
constexpr double movingShare = 0.006;       // of the picture: two blocks
constexpr double steadyFocus = 0.6;         // energy from look to look
constexpr double outOfFocus = 0.3;          // energy of what has stayed the same
constexpr double mostNoise = 60;            // energy: what is more is movement
constexpr double boundary = 0.015;          // of the picture showing something new: difference 0.32
constexpr milliseconds settled{1000};       // then a slightly other look is what the page looks like now
constexpr double settledShare = 0.85 * boundary;

// Steep about the boundary and between 0 and 1: half of the boundary gives 0.11, double 0.65.
double differenceOf(double share)
{
    const double square = (share / boundary) * (share / boundary);
    return square / (square + 0.68 / 0.32);
}

} // namespace

void PageCheck::reset()
{
    page_.clear();
    before_.clear();
    difference_ = 1;
}

PageCheck::Result PageCheck::check(const cv::Mat& rgb, double threshold, Time now)
{
    reduction_.build(rgb, reducedSide);
    now_.build(reduction_);
    Result result;
    if (!isStill(now)) {
        restSince_ = now;
        handInSight_ = false;
    } else {
        result.newPage = isNew(threshold, now);
    }
    result.difference = difference_;
    std::swap(before_, now_);
    beforeTaken_ = now;
    return result;
}

bool PageCheck::isStill(Time now)
{
    if (before_.size() != now_.size() || now - beforeTaken_ > lostTrack) {
        judged_ = false;
        return false;
    }
    sinceBefore_.compare(now_, before_, noise_, false);
    noise_ = std::min(sinceBefore_.noise(), mostNoise);
    if (sinceBefore_.changedShare() >= movingShare) {
        judged_ = false;
        return false;
    }
    const double focus = sinceBefore_.energyRatio();
    return focus > steadyFocus && focus < 1 / steadyFocus;
}

// Called for a picture in which nothing has moved since the last one.
bool PageCheck::isNew(double threshold, Time now)
{
    if (page_.size() != now_.size())
        difference_ = 1;
    if (now - restSince_ < restTime)
        return false;
    if (page_.size() != now_.size()) {
        const bool something = scene_.showsSomething(now_);
        remember(); // an empty desk, too: the first page will differ from it
        return something && difference_ >= threshold;
    }
    sincePage_.compare(now_, page_, noise_, true);
    const PageScene::Judgement scene = scene_.judge(now_, page_, sincePage_);
    difference_ = differenceOf(scene.newShare);
    if (scene.hand && !handInSight_)
        handSince_ = now;
    handInSight_ = scene.hand;
    const bool blurred = sincePage_.sharpness() < outOfFocus;
    if ((scene.hand && now - handSince_ < handPatience) || (blurred && now - restSince_ < focusPatience))
        return false;
    // Once judged, a page stays what it is until something moves, however the lens may hunt.
    const bool isNew = difference_ >= threshold && !judged_;
    judged_ = true;
    // Light and paper change little by little, and a nudge leaves traces along the page's edges.
    const bool drifted = now - restSince_ >= settled && sincePage_.changedShare() < settledShare;
    if (isNew || (drifted && !scene.hand))
        remember();
    return isNew;
}

void PageCheck::remember()
{
    page_.copyFrom(now_);
    judged_ = true;
}

} // namespace mirvak
