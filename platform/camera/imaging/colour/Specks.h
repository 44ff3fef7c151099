#pragma once

#include <opencv2/core.hpp>

namespace mirvak {

/// Takes away what is black and small, in place: connected pixels (8 neighbours), `largest` of them at most.
/// @param black  CV_8UC1, 255 where black, else 0
void removeSpecks(cv::Mat& black, int largest);

} // namespace mirvak
