#pragma once

#include <opencv2/core.hpp>

#include <optional>
#include <string>

namespace mirvak {

/// The picture of a page, made ready to be read.
struct PagePicture
{
    cv::Mat grey;   ///< CV_8UC1; paper 255 under even light, ink dark
    double dpi = 0; ///< dots per inch of `grey`
    /// Where each place of `grey` lies in the picture file as seen, as a homography; px from the outer corner
    /// at the top left, so that the first pixel's centre is at (0.5, 0.5).
    cv::Matx33d toPicture = cv::Matx33d::eye();
    cv::Size picture; ///< px of the picture file as seen
};

/// Reads a picture file, cuts out the page when it lies on a darker ground, sets its lines level and evens
/// out its light.
/// @return nothing when the file is no picture. Reentrant.
std::optional<PagePicture> openPage(const std::string& path);

/// Turns by quarter turns clockwise.
void turnPage(PagePicture& page, int quarterTurns);

/// Scales the pixels; the resolution follows, so that the page keeps its size.
void scalePage(PagePicture& page, double factor);

} // namespace mirvak
