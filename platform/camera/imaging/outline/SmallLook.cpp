#include "SmallLook.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>

namespace mirvak {

bool SmallLook::canHoldPage(const cv::Mat& rgb)
{
    return std::min(rgb.cols, rgb.rows) >= leastSize;
}

/// Smoothed into planes of their own, as a filter in place copies its input first.
const SmallLook::Planes& SmallLook::build(const cv::Mat& rgb)
{
    reduction_.build(rgb, longestSide);
    for (size_t i = 0; i < smooth_.size(); ++i)
        cv::GaussianBlur(reduction_.planes()[i], smooth_[i], {3, 3}, 0);
    return smooth_;
}

std::array<cv::Point2d, 4> SmallLook::inPicture(std::array<cv::Point2d, 4> corners) const
{
    for (cv::Point2d& corner : corners)
        corner = reduction_.toFull(corner);
    const auto first = std::min_element(
        corners.begin(), corners.end(), [](const auto& a, const auto& b) { return a.x + a.y < b.x + b.y; });
    std::rotate(corners.begin(), first, corners.end());
    return corners;
}

bool colourAt(const SmallLook::Planes& planes, const cv::Point2d& point, std::array<int, 3>& colour)
{
    const int x = cvRound(point.x), y = cvRound(point.y);
    if (x < 0 || y < 0 || x >= planes[0].cols || y >= planes[0].rows)
        return false;
    for (size_t c = 0; c < 3; ++c)
        colour[c] = planes[c].ptr(y)[x];
    return true;
}

} // namespace mirvak
