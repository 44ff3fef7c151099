#pragma once

#include "DeskColours.h"
#include "RegionField.h"
#include "SmallLook.h"

#include <opencv2/core.hpp>

#include <array>

namespace mirvak {

/// What the colours at both sides of an outline say, shares of the samples.
struct SideColours
{
    double insideSmooth = 0, leastInsideSmooth = 1, outsideSmooth = 0;
    double known = 0, mostKnown = 0, insideDesk = 0, outsideDesk = 0, leastOutsideDesk = 1, oneTint = 0,
           tintStep = 0;
};

/// Of an outline in the small picture, clockwise. Of the sides whose outside the picture does not show only
/// the inside counts.
SideColours colourEvidence(const std::array<cv::Point2d, 4>& corners,
                           const SmallLook::Planes& planes,
                           const DeskColours& desk);

/// What the regions at both sides of the outline say, levels as shares of 1.
struct SideRegions
{
    double step = 0, leastStep = 1, steady = 0, leastSteady = 1, smoother = 0, leastSmoother = 1,
           insideDetail = 0, insideSpread = 0;
};

SideRegions regionEvidence(const std::array<cv::Point2d, 4>& corners, const RegionField& regions);

} // namespace mirvak
