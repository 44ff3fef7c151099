#pragma once

#include "books/Spread.h"

/// What people use instead. RGB in, RGB out.
namespace rivals {

/// Cut out by the true corners of the page and made upright: what a perfect cropping alone can do.
cv::Mat cropped(const deskpictures::Spread& spread, bool isRight);
/// Where that crop has a point of the page (mm), in parts of its width.
cv::Point2d placeInCrop(const deskpictures::Spread& spread, bool isRight, cv::Point2d pointMm);
/// Leptonica's dewarping by text lines of such a crop; the crop itself where it gives up.
cv::Mat dewarped(const cv::Mat& crop);

} // namespace rivals
