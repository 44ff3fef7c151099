#pragma once

#include <opencv2/core.hpp>

namespace mirvak {

/// The resolution that the cameras' pictures carry: 8464 dots per metre, an A4 page filling an 8-megapixel
/// frame.
constexpr double cameraDpi = 8464 * 0.0254;

/// What an image handle points at.
struct Image
{
    cv::Mat pixels;         ///< CV_8UC3, red green blue, continuous
    double dpi = cameraDpi; ///< dots per inch, both axes
    cv::Mat spare;          ///< second buffer of the same bytes for operations that cannot work in place
};

} // namespace mirvak
