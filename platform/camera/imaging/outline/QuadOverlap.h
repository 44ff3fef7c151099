#pragma once

#include <opencv2/core.hpp>

#include <array>

namespace mirvak {

// Areas of convex quadrilaterals with their corners clockwise as seen in a picture, in square pixels.
// cv::intersectConvexConvex (OpenCV 4.6) answers far too much or too little where sides lie in one line, and
// those of outlines that are weighed against each other mostly do.

double areaOf(const std::array<cv::Point2d, 4>& corners);

/// What the two have in common: one is cut along each side of the other (Sutherland and Hodgman 1974).
double sharedArea(const std::array<cv::Point2d, 4>& a, const std::array<cv::Point2d, 4>& b);

/// Shared area over joined area, 0 to 1.
double overlapOf(const std::array<cv::Point2d, 4>& a, const std::array<cv::Point2d, 4>& b);

} // namespace mirvak
