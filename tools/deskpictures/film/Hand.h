#pragma once

#include <opencv2/core.hpp>

namespace deskpictures {

/// A right hand with a sleeve, seen from above: a picture that is laid into the frames of the film.
struct HandPicture
{
    cv::Mat colours; ///< CV_8UC4, sRGB, premultiplied; fingers point up, the arm leaves at the lower edge
    cv::Point2d fingertipPx; ///< where the fingers touch the paper
    double pxPerMm = 0;
};

/// Drawn as a body: balls rolled along the bones, melted together, lit from the upper left. Takes about a
/// second.
HandPicture drawHand();

} // namespace deskpictures
