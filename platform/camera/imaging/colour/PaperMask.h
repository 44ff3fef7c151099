#pragma once

#include "PaperTint.h"

#include <opencv2/core.hpp>

namespace mirvak {

/// Where empty paper is seen. Light changes softly, and its tint slower still, while boxes and pictures begin
/// at an edge. So the picture falls into the parts that lie between edges, and a part is paper when its
/// colour is what the paper about it leads to expect; the larger a part, the more its light may differ.
/// @param colours  CV_32FC3, levels, without thin print
/// @param bright   brightPaper() of it
/// @return CV_8UC1, 255: paper. All 0 when none is found.
cv::Mat paperMask(const cv::Mat& colours, const Tint& bright);

} // namespace mirvak
