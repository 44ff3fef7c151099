#pragma once

#include <opencv2/core.hpp>

namespace mirvak {

/// Looks for the page in `rgb` and draws its outline into `target`, a picture of the same size: `colour` as
/// red << 16 | green << 8 | blue, `width` pixels thick (at least 1). @return false when no page is found.
bool drawOutline(const cv::Mat& rgb, cv::Mat& target, unsigned colour, int width);

} // namespace mirvak
