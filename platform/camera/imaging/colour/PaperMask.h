#pragma once

#include <opencv2/core.hpp>

namespace mirvak {

/// Level and tint of a colour: the mean of its channels, and the shares of red and blue in their sum.
struct Tint
{
    float level, red, blue;
};
Tint tintOf(const cv::Vec3f& colour);

/// Median tint and level of the brighter places of a picture (CV_32FC3): most of them are paper.
Tint brightPaper(const cv::Mat& colours);

/// Where empty paper is seen. Light changes softly, and its tint slower still, while boxes and pictures begin
/// at an edge. So the picture falls into the parts that lie between edges, and a part is paper when its
/// colour is what the paper about it leads to expect; the larger a part, the more its light may differ.
/// @param colours  CV_32FC3, levels, without thin print
/// @param bright   brightPaper() of it
/// @return CV_8UC1, 255: paper. All 0 when none is found.
cv::Mat paperMask(const cv::Mat& colours, const Tint& bright);

} // namespace mirvak
