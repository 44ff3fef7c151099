#pragma once

#include <opencv2/core.hpp>

#include <array>

namespace mirvak {

/// Draws an outline: `colour` as red << 16 | green << 8 | blue, `width` pixels thick (at least 1).
void drawOutline(cv::Mat& rgb, const std::array<cv::Point2d, 4>& corners, unsigned colour, int width);

} // namespace mirvak
