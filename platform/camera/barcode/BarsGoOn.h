#pragma once

#include "CodeLocator.h"

namespace mirvak {

/// Whether the same bars go on all the way from one strip of a place that looks like a bar code to another
/// one above or below it, so that both are one code and not two labels with the same text. `from` and `to`
/// are the middles of the strips, pixels of the frame. False also where that cannot be seen. Reentrant.
bool barsGoOn(const GreyFrame& frame,
              const Candidate& candidate,
              const cv::Point2f& from,
              const cv::Point2f& to);

} // namespace mirvak
