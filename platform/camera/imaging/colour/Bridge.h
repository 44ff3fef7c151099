#pragma once

#include <opencv2/core.hpp>

namespace mirvak {

/// Fills where the weight is 0 from ever coarser means of the known places (pull and push: Gortler and
/// others, The lumigraph, 1996).
/// @param values   CV_32FC3  @param weights  CV_32FC1, 0 to 1, same size  @return CV_32FC3
cv::Mat bridged(const cv::Mat& values, const cv::Mat& weights);

} // namespace mirvak
