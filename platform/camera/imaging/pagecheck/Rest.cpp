#include "Rest.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>

namespace mirvak {

namespace {

constexpr std::chrono::milliseconds span{300}; // slower than 1 cm in it is at rest for a camera's exposure
constexpr double movedCorner = 0.01;           // of the longest side: outlines tremble by less
constexpr int changedCell = 14;                // levels, of the mean of nine cells
constexpr double changedShare = 0.04;          // of the page
constexpr double leastShare = 0.01;            // of the page, where its corners have moved, too
constexpr int edgeCells = 2;                   // in which page and desk mix
constexpr int meanOf = 3;                      // cells, both ways: letters under a trembling desk stay alike

} // namespace

Rest::State Rest::judge(const ShotLook& look, Time taken)
{
    cv::blur(look.cells(), now_, {meanOf, meanOf});
    if (!has_ || before_.size() != now_.size()) {
        last_ = State::rests;
        remember(look, taken);
        return last_;
    }
    const State state = compare(look);
    if (state == State::rests && taken - then_ < span)
        return last_;
    last_ = state;
    remember(look, taken);
    return state;
}

Rest::State Rest::compare(const ShotLook& look)
{
    const cv::Scalar light = cv::mean(now_, look.inPage()), lightThen = cv::mean(before_, look.inPage());
    before_.convertTo(difference_, CV_8U, light[0] / std::max(1.0, lightThen[0]));
    cv::absdiff(now_, difference_, difference_);
    cv::threshold(difference_, difference_, changedCell, 255, cv::THRESH_BINARY);
    // With the cells at the page's edge, where movement shows most.
    cv::bitwise_or(look.inPage(), inPageBefore_, inPage_);
    cv::dilate(inPage_, inPage_, cv::Mat(), {-1, -1}, edgeCells);
    difference_ &= inPage_;
    const double changed = cv::countNonZero(difference_), page = cv::countNonZero(inPage_);
    if (changed > changedShare * page)
        return State::moves;
    if (!cornersMoved(look))
        return State::rests;
    return changed > leastShare * page ? State::moves : State::unsteady;
}

bool Rest::cornersMoved(const ShotLook& look) const
{
    for (size_t i = 0; i < page_.corners.size(); ++i) {
        if (cv::norm(look.page().corners[i] - page_.corners[i]) > movedCorner * look.longestSide())
            return true;
    }
    return false;
}

void Rest::remember(const ShotLook& look, Time taken)
{
    has_ = true;
    then_ = taken;
    page_ = look.page();
    now_.copyTo(before_);
    look.inPage().copyTo(inPageBefore_);
}

} // namespace mirvak
