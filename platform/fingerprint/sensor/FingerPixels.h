#pragma once

#include <opencv2/core.hpp>

#include <cstdint>
#include <vector>

namespace mirvak {

constexpr int fingerWidth = 256, fingerHeight = 360;

/// 256 x 360 grey pixels, rows from the top down.
using FingerPixels = std::vector<std::uint8_t>;

/// `grey` (CV_8UC1, not empty, any size) scaled to fit, in the middle of white.
FingerPixels fitFinger(const cv::Mat& grey);

} // namespace mirvak
