#pragma once

#include <opencv2/core.hpp>

#include <array>

namespace mirvak {

/// Focal length of the usual lens in units of the picture's longer side: about 55 degrees of view.
constexpr double usualFocal = 0.95;

/// Width over height of the flat rectangle that shows as these four corners (clockwise from the top left) in
/// a picture of that size. Takes the camera's focal length from the perspective where that says enough (Zhang
/// and He, Whiteboard scanning and image enhancement, MSR-TR-2003-39), else a usual one.
double pageAspect(const std::array<cv::Point2d, 4>& corners, const cv::Size& picture);

} // namespace mirvak
