#pragma once

#include <opencv2/core.hpp>

namespace mirvak {

/// Takes away what the folds of a letter leave in black and white, in place: faint strokes along a straight
/// line that runs from one edge of the picture to the other, up to three of them each way. Where there are
/// more, the paper is ruled, and all stay. Whatever crosses such a line stays, too.
/// @param black  CV_8UC1, 255 where black, else 0
/// @param dark   CV_8UC1 of that size, from 0 on paper to 255
void removeCreases(cv::Mat& black, const cv::Mat& dark);

} // namespace mirvak
