#pragma once

#include <opencv2/core.hpp>

namespace deskpictures {

/// Smooth random hills: independent values on a grid of cellPx, joined by cubic curves. @return CV_32F, about
/// -1 to 1
cv::Mat valueNoise(cv::Size size, cv::Size2d cellPx, cv::RNG& random);

/// Octaves of hills, each half as wide and gain times as high as the one before it. @return CV_32F, about -1
/// to 1
cv::Mat fractalNoise(cv::Size size, cv::Size2d cellPx, int octaves, double gain, cv::RNG& random);

} // namespace deskpictures
