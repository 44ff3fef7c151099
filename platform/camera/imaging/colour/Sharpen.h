#pragma once

#include <opencv2/core.hpp>

namespace mirvak {

/// Gives strokes back what the lens took: unsharp masking, in place, of the brightness alone, so that no
/// coloured fringes come up. Differences that noise could have made stay as they are.
/// @param rgb     CV_8UC3
/// @param amount  0 nothing, 1 the difference from the softened picture once more
/// @param noise   standard deviation of the picture's noise, levels
void sharpen(cv::Mat& rgb, double amount, double noise);

} // namespace mirvak
