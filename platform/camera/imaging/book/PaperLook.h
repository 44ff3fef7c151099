#pragma once

#include <opencv2/core.hpp>

namespace mirvak {

/// Where a page of an open book looks like paper. All pictures have the spine at their left and one size.
struct PaperLook
{
    cv::Mat paper;        ///< CV_8UC1, 255 where the colour is that of the paper, in light or shadow
    cv::Mat level;        ///< CV_32FC1, brightness in units of the paper's
    float paperLevel = 0; ///< brightness of the paper, 0 to 255
};

/// @param colours  CV_8UC3, RGB, the spine at the left
/// @param text  pixels, inside the picture: what is certainly page
/// @param hasSpine  false: the only page, whose left side is no margin at a spine
PaperLook lookOfPaper(const cv::Mat& colours, const cv::Rect& text, bool hasSpine);

} // namespace mirvak
