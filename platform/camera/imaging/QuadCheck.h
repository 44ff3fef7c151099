#pragma once

#include <opencv2/core.hpp>

#include <array>

namespace mirvak {

/// Whether the paper goes on behind exactly one long side of the outline and nowhere else: then that side is
/// the fold of an open book, and to crop there would lose a page. `planes`: the small picture, corners
/// clockwise.
bool isHalfOfSpread(const std::array<cv::Mat, 3>& planes, const std::array<cv::Point2d, 4>& corners);

/// Whether along the sides of the picture through which the outline leaves it there is paper to see: one even
/// colour, or that of the page along its other sides. True when no side leaves the picture.
bool paperReachesBorder(const std::array<cv::Mat, 3>& planes, const std::array<cv::Point2d, 4>& corners);

} // namespace mirvak
