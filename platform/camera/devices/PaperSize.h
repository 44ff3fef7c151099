#pragma once

#include <opencv2/core.hpp>

#include <optional>

namespace mirvak {

constexpr int paperA3 = 3;
constexpr int paperA4 = 4;

/// A4 has half the area of A3 and the same proportions: each side is this part of the larger sheet's.
constexpr double a4ShareOfA3 = 0.70710678118654752;

/// Decides from one picture whether the other paper size would fit better.
/// @param rgb      CV_8UC3
/// @param present  paperA3 or paperA4, the size that the picture was taken with
/// @param low,high shares of the picture's area, 0 to 1. A page smaller than `low` is not judged; one larger
///                 than `high` is too large for A4.
/// @return the size to change to; nothing when no page is seen or the present size is right
std::optional<int> judgePaperSize(const cv::Mat& rgb, int present, double low, double high);

} // namespace mirvak
