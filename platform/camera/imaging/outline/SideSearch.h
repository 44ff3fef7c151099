#pragma once

#include "EdgeField.h"

#include <opencv2/core.hpp>

#include <array>
#include <vector>

namespace mirvak {

// What an outline would be if one of its sides lay elsewhere, between the same two neighbours. A pen, a
// finger or a reflection hides the edge of a sheet, and a line of print or of the desk beside it is taken
// for the side. Coordinates are those of the small picture; corners are clockwise, and side i runs from
// corner i to corner i + 1.

/// With side `side` on the strongest straight edges that its neighbours meet when they are drawn out or cut
/// short, however faint; the strongest first, at most three.
std::vector<std::array<cv::Point2d, 4>>
withSideOnEdges(const EdgeField& edges, const std::array<cv::Point2d, 4>& corners, size_t side);

/// Longer over shorter side: paper of the A and B rows and Letter, an identity card (ID-1), a photograph.
constexpr double usualProportions[] = {1.4142, 279.4 / 215.9, 85.6 / 53.98, 1.5};

/// With side `side` where a sheet of usual proportions ends, either way round, by the three other sides
/// alone: where its neighbours run to tells how the sheet is tilted, for a lens of the usual angle. What
/// would lie outside the picture stays out. `picture`: size of the small one.
std::vector<std::array<cv::Point2d, 4>>
withSideByFormat(const cv::Size& picture, const std::array<cv::Point2d, 4>& corners, size_t side);

} // namespace mirvak
