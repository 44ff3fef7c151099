#pragma once

#include "Image.h"
#include "PageShape.h"

#include <opencv2/core.hpp>

namespace mirvak {

/// Pixels that a margin leaves of the page.
constexpr int leastPage = 16;

/// The page that shows between the corners, without its perspective, in one resampling (bilinear).
/// @param picture   RGB
/// @param margin    pixels (0 or more) that are trimmed inside each edge, as far as leastPage allows. Paper
/// of a
///                  usual size stays as large as it is, and its edge continues the paper beside it.
/// @param straight  receives the pixels, in its buffer where that is large enough, and the resolution: the
///                  format's, else the picture's
/// @return the place in `picture` of each place of `straight`, as a homography; whole numbers are the centres
/// of pixels
cv::Matx33d
straighten(const Image& picture, const Outline& outline, const PageShape& page, int margin, Image& straight);

} // namespace mirvak
