#pragma once

#include <opencv2/core.hpp>

namespace mirvak {

/// Which ends of a picture are ends of its paper, where a finger may come in.
struct OpenEnds
{
    bool left = true, top = true, right = true, bottom = true;
};

/// Fills fingers that come in over the paper's ends with the paper around them, in place: what has the colour
/// of skin against the paper and the breadth of fingers. Print beside them is not painted over.
/// @param rgb  CV_8UC3, a flat page
void removeFingers(cv::Mat& rgb, const OpenEnds& ends);

} // namespace mirvak
