#pragma once

#include <opencv2/core.hpp>

#include <chrono>
#include <cstdint>
#include <optional>

namespace mirvak {

/// The resolution that the cameras' pictures carry: 8464 dots per metre, an A4 page filling an 8-megapixel
/// frame.
constexpr double cameraDpi = 8464 * 0.0254;

/// Larger pictures are refused, so that a forged header cannot take all memory: 200 million pixels, more than
/// an A3 page at 1200 dots per inch on each side of 14000.
constexpr std::int64_t maxPixels = 200'000'000;

/// What an image handle points at.
struct Image
{
    cv::Mat pixels;                                             ///< CV_8UC3, red green blue, continuous
    double dpi = cameraDpi;                                     ///< dots per inch, both axes
    std::optional<std::chrono::steady_clock::time_point> taken; ///< when the camera delivered it
    cv::Mat spare; ///< second buffer of the same bytes for operations that cannot work in place
};

} // namespace mirvak
