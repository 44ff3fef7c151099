#pragma once

#include "Image.h"

namespace mirvak {

/// Cuts out the rectangle (pixels), clipped to the picture.
/// @return false, and the picture is unchanged, when nothing is left.
bool crop(Image& image, int left, int top, int width, int height);

enum class Scaling { nearest, bilinear, area, bicubic };

/// @return false, and the picture is unchanged, for sizes below 1 or beyond maxPixels.
bool resize(Image& image, int width, int height, Scaling scaling);

/// A picture of the base's size and resolution with the inset scaled to width x height at (x, y), clipped.
/// @return false for a size below 1 or beyond maxPixels. `merged` has the base's size.
bool merge(const Image& base, const Image& inset, const cv::Rect& place, Image& merged);

} // namespace mirvak
