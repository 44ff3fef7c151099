#include "ControlScale.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr int ratioPositions = 100;

}

ControlScale::ControlScale(const MirvakControlInfo& info)
    : minimum_(info.minimum), maximum_(info.maximum), step_(std::max(info.step, 1)),
      isByRatio_(info.control == MIRVAK_EXPOSURE_TIME && info.minimum > 0),
      last_(isByRatio_ ? ratioPositions : (maximum_ - minimum_) / step_)
{
}

int ControlScale::valueAt(int position) const
{
    if (!isByRatio_)
        return minimum_ + position * step_;
    const double ratio = static_cast<double>(maximum_) / minimum_;
    return static_cast<int>(std::lround(minimum_ * std::pow(ratio, static_cast<double>(position) / last_)));
}

int ControlScale::positionOf(int value) const
{
    const int inside = std::clamp(value, minimum_, std::max(minimum_, maximum_));
    if (!isByRatio_)
        return (inside - minimum_ + step_ / 2) / step_;
    const double share =
        std::log(static_cast<double>(inside) / minimum_) / std::log(static_cast<double>(maximum_) / minimum_);
    return static_cast<int>(std::lround(share * last_));
}
