#pragma once

#include <opencv2/core.hpp>

#include <vector>

namespace mirvak {

/// Places without any white paper in them, where photographs are printed: neither lines nor letters lie so
/// close that no paper is left. Screened prints count by their mean tone.
/// @param grey CV_8UC1, evened out @param markHeight px
std::vector<cv::Rect> picturesOf(const cv::Mat& grey, int markHeight);

} // namespace mirvak
