#pragma once

#include <opencv2/core.hpp>

namespace face {

/// Made smaller without aliasing, or larger smoothly. `size` may be of another shape.
cv::Mat resized(const cv::Mat& picture, cv::Size size);

/// A picture that is dark all over, made as light as others are; any other as it is.
cv::Mat lightened(const cv::Mat& rgb);

/// The part of the rectangle that lies in the picture.
cv::Rect inside(const cv::Rect2f& rectangle, const cv::Mat& picture);

} // namespace face
