#pragma once

#include "Image.h"

#include <opencv2/core.hpp>

#include <array>
#include <vector>

namespace mirvak {

enum class Deskewed {
    page,    ///< the page was found, its perspective taken out, and the picture cropped to it
    text,    ///< no page was found; the picture was turned so that its lines of text lie level
    nothing, ///< neither was found, or all is straight already; the picture is unchanged
};

/// Straightens the picture of a page. `margin`: pixels (0 or more) trimmed inside each straightened edge, so
/// that no sliver of the desk stays. The page keeps the orientation in which it is seen. A page whose shape
/// is that of a usual paper or card (PaperFormat) gets exactly these proportions and the resolution with
/// which it prints at its real size; of paper, the trimmed edge is filled with the paper beside it, so that
/// the sheet stays whole. Without a page nothing is cropped away: the picture grows, on the colour of its
/// paper. `toOld`, unless null, receives where each place of the new picture was in the old one, as a
/// homography; whole numbers are the centres of pixels.
Deskewed deskew(Image& image, int margin, cv::Matx33d* toOld = nullptr);

/// The same for all sheets that lie side by side: one picture each, in reading order. Empty when no sheet is
/// found; the picture itself stays as it is.
std::vector<Image> deskewAll(const Image& image, int margin);

/// Cuts out what lies between four corners (clockwise, as of Outline), any part of a picture, and takes the
/// perspective out; the resolution stays.
/// @return false, and the picture is unchanged, when they enclose no convex area of some pixels
bool cutOut(Image& image, const std::array<cv::Point2d, 4>& corners);

} // namespace mirvak
