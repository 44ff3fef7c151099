#pragma once

#include <opencv2/core.hpp>

namespace deskpictures {

/// A finger that lies on paper.
struct Finger
{
    cv::Point2d tipPx;
    cv::Point2d inwardPx; ///< unit vector in the picture, from the hand to the tip
    double pxPerMm = 8;
    double halfWidthMm = 9;
    cv::Vec3d skin{226, 176, 146}; ///< sRGB
    bool hasNail = true;
    uint64_t seed = 1;
};

/// Paints a finger with its hand's begin, round and lit from the upper left.
/// @param layer  CV_8UC4, premultiplied, the picture's size; what it holds stays where the finger is not
void paintFinger(cv::Mat& layer, const Finger& finger);

} // namespace deskpictures
