#pragma once

#include <opencv2/core.hpp>

/// By how many degrees, within 8, the lines of text in the middle of a picture are turned: where the sums of
/// its rows differ most from each other (Postl 1986). CV_8UC3, RGB, or CV_8UC1.
double skewLeft(const cv::Mat& picture);
