#pragma once

#include "EdgeField.h"

#include <opencv2/core.hpp>

#include <array>

namespace mirvak {

/// Whether the paper goes on behind exactly one long side of the outline, and both sides that end there go on
/// too: then that side is the fold of an open book, and to crop there would lose a page. Another sheet below
/// the page has edges of its own. `planes`: the small picture, `edges`: those of it, corners clockwise.
bool isHalfOfSpread(const std::array<cv::Mat, 3>& planes,
                    const EdgeField& edges,
                    const std::array<cv::Point2d, 4>& corners);

/// Whether along the sides of the picture through which the outline leaves it there is paper to see: the
/// colour that is seen inside at least two of its other sides. True when no side leaves the picture.
bool paperReachesBorder(const std::array<cv::Mat, 3>& planes, const std::array<cv::Point2d, 4>& corners);

} // namespace mirvak
