#pragma once

#include "Outline.h"

#include <opencv2/core.hpp>

namespace mirvak {

/// Whether all of a page lies in the picture. `doubtful`: the outline follows the picture's border, but what
/// lies there is not the page.
enum class Wholeness { whole, leavesPicture, doubtful };
Wholeness wholenessOf(const cv::Mat& rgb, const Outline& page);

} // namespace mirvak
