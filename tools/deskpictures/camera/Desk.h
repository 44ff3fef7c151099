#pragma once

#include <opencv2/core.hpp>

namespace deskpictures {

enum class Material { Light, Oak, Grey, Dark, Walnut };

/// Pixels a millimetre of the desk tops below; their middle is the desk's origin.
constexpr double deskPxPerMm = 6.5;

/// The top of a desk, 8-bit RGB, made at the first call and kept. Thread-safe.
const cv::Mat& deskTop(Material material);

} // namespace deskpictures
