#pragma once

#include <opencv2/core.hpp>

/// Greatest difference of two pictures of the same size and type, or what another norm says.
inline double difference(const cv::Mat& a, const cv::Mat& b, int norm = cv::NORM_INF)
{
    return a.size() == b.size() && a.type() == b.type() && !a.empty() ? cv::norm(a, b, norm) : 1e9;
}

/// Smallest rectangle around all pixels that do not have the colour.
inline cv::Rect otherThan(const cv::Mat& rgb, const cv::Vec3b& colour)
{
    cv::Rect box;
    for (int y = 0; y < rgb.rows; ++y)
        for (int x = 0; x < rgb.cols; ++x)
            box |= rgb.at<cv::Vec3b>(y, x) == colour ? cv::Rect() : cv::Rect(x, y, 1, 1);
    return box;
}
