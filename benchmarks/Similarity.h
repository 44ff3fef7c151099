#pragma once

#include <opencv2/core.hpp>

/// Structural similarity (Wang and others, Image quality assessment, 2004), mean over two pictures of one
/// size: CV_32FC1, 0 to 255. 1 for the same picture.
double ssim(const cv::Mat& a, const cv::Mat& b);
