#pragma once

#include <opencv2/core.hpp>

#include <optional>

namespace mirvak {

/// Measures by how much the lines of text are turned, by projection profiles of the letters' feet (Postl
/// 1986): the profile is sharpest along the lines. Lines may run across or up the picture.
/// @return degrees clockwise within ±20; nothing when no text lines stand out. Reentrant.
std::optional<double> findTextSkew(const cv::Mat& rgb);

} // namespace mirvak
