#pragma once

#include <opencv2/core.hpp>

namespace mirvak {

/// Takes the ink of coloured seals out of a page in place: what is printed below stays, their own letters go.
/// A seal is a ring or a frame of colour with something in it; coloured titles and text stay as they are.
/// @param rgb CV_8UC3, paper white. @return whether there was one
bool takeOutSeals(cv::Mat& rgb);

} // namespace mirvak
