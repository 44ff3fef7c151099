#pragma once

#include "Outline.h"

#include <opencv2/core.hpp>

namespace mirvak {

/// Width over height of the flat rectangle that shows as these four corners (clockwise from the top left) in
/// a picture of that size. Takes the camera's focal length from the perspective where that says enough (Zhang
/// and He, Whiteboard scanning and image enhancement, MSR-TR-2003-39), else a usual one.
double pageAspect(const std::array<cv::Point2d, 4>& corners, const cv::Size& picture);

/// Size in pixels of the straightened page that loses no detail: no side shorter than it was seen.
cv::Size2d pageSize(const std::array<cv::Point2d, 4>& corners, const cv::Size& picture);

} // namespace mirvak
