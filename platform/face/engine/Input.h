#pragma once

#include <opencv2/dnn.hpp>

#include <vector>

namespace face {

/// Pictures of one size as the input of a network: count x 3 x rows x columns, (value - mean) / divisor.
inline cv::Mat inputOf(const std::vector<cv::Mat>& rgb, const cv::Scalar& mean, double divisor)
{
    return cv::dnn::blobFromImages(rgb, 1 / divisor, cv::Size(), mean, false, false, CV_32F);
}

} // namespace face
