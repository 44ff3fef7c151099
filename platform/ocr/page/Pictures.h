#pragma once

#include <opencv2/core.hpp>

#include <vector>

namespace mirvak {

/// Places where photographs and drawings with shades are printed: those without any white paper, since
/// neither lines nor letters lie so close that none is left, and those that are shaded for the most part,
/// since letters end at once. Screened prints count by their mean tone.
/// @param grey CV_8UC1, evened out @param markHeight px
std::vector<cv::Rect> picturesOf(const cv::Mat& grey, int markHeight);

} // namespace mirvak
