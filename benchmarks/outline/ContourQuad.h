#pragma once

#include <opencv2/core.hpp>

#include <array>
#include <optional>

/// What people use instead: the largest convex quadrilateral among the contours of Canny's edges, on a copy
/// of 640 pixels. RGB.
std::optional<std::array<cv::Point2d, 4>> contourQuad(const cv::Mat& rgb);
