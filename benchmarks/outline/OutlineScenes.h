#pragma once

#include "DeskTops.h"

#include <opencv2/core.hpp>

#include <array>
#include <string>

using Corners = std::array<cv::Point2d, 4>;

/// One frame of the camera of which the outline is known.
struct OutlineScene
{
    std::string name; ///< what lies there and what disturbs
    cv::Mat picture;  ///< 8-bit RGB
    Corners sheet;    ///< clockwise from its own top left, pixel centres at whole numbers
};

/// A sheet on a desk of that kind: which one, how it lies, what lies over and below it, light, reflections,
/// noise and coding by `seed`.
OutlineScene makeOutlineScene(desktops::Kind desk, cv::Size picture, unsigned seed);
/// The same without a sheet; there may be a pen.
cv::Mat makeEmptyDesk(desktops::Kind desk, cv::Size picture, unsigned seed);
