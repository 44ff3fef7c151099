#pragma once

#include "Chance.h"

namespace sheetmap {

/// What falls on a desk and what a camera makes of it. `picture`: CV_32FC3, 0 to 255 and beyond.
void castLight(cv::Mat& picture, Chance& chance);
/// Blur, noise and coding. @return 8-bit RGB
cv::Mat photograph(const cv::Mat& picture, Chance& chance);

} // namespace sheetmap
