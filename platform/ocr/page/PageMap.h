#pragma once

#include <opencv2/core.hpp>

/// Where places of a changed picture were before the change: homographies on px from the outer corner at the
/// top left, so that sizes and not the centres of pixels count.
namespace mirvak::pageMap {

/// The same for a homography on the centres of pixels.
cv::Matx33d fromCentres(const cv::Matx33d& toOld);

/// After a turn about the centre, clockwise, to a picture of another size.
cv::Matx33d turnedBack(double degrees, const cv::Size& before, const cv::Size& after);

cv::Matx33d scaledBack(const cv::Size& before, const cv::Size& after);

} // namespace mirvak::pageMap
