#pragma once

#include "PageLook.h"

#include <vector>

namespace mirvak {

/// How a page has moved from one look to another: shift, small turn and small change of size. Pixels are
/// those of the finest level.
struct Sway
{
    cv::Point2d middle; ///< of the picture
    cv::Point2d shift;  ///< there
    double growth = 0;  ///< per pixel from the middle
    double turn = 0;    ///< radians, clockwise

    /// From a point now to the same point then.
    cv::Point2d at(cv::Point2d now) const
    {
        const cv::Point2d from = now - middle;
        return {shift.x + growth * from.x - turn * from.y, shift.y + turn * from.x + growth * from.y};
    }
};

/// What one block says about it.
struct SwayStep
{
    cv::Point2d at;    ///< the block's middle now
    cv::Point2d shift; ///< from there to the same thing then
    double weight = 1;
};

/// No movement of these looks.
Sway noSway(const PageLook& look);
/// Least squares with weights that fall with the residual (Geman and McClure), because blocks of mere lines
/// slide along them. `sway` is where to begin; `tolerance` is the residual that halves a block's say twice.
void fitSway(const std::vector<SwayStep>& steps, double tolerance, Sway& sway);
/// Finds the movement of the blocks with `moved` set by matching blocks of the coarse levels: up to 40
/// pixels and some 4 degrees.
Sway findSway(const PageLook& now, const PageLook& then, const std::vector<unsigned char>& moved);

} // namespace mirvak
