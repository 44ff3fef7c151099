#include "BookLook.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>

namespace mirvak {

namespace {
constexpr int lookSide = 1500; // a letter of 8 points in a spread that fills the frame is 4 pixels high
}

BookLook::BookLook(const cv::Mat& rgb) : full_(rgb.size())
{
    Reduction reduction;
    reduction.build(rgb, lookSide);
    factor_ = reduction.factor();
    cv::merge(reduction.planes().data(), 3, colours_);
    green_ = reduction.planes()[1].clone();
    fullSide_ = std::max(rgb.cols, rgb.rows);
    side_ = fullSide_ / factor_;
}

cv::Point2d BookLook::toFrame(const cv::Point2d& pixel) const
{
    const cv::Point2d full = (pixel + cv::Point2d(0.5, 0.5)) * factor_;
    return (full - cv::Point2d(full_.width, full_.height) * 0.5) / fullSide_;
}

cv::Point2d BookLook::toPixel(const cv::Point2d& frame) const
{
    return (toFull(frame) + cv::Point2d(0.5, 0.5)) / factor_ - cv::Point2d(0.5, 0.5);
}

cv::Point2d BookLook::toFull(const cv::Point2d& frame) const
{
    return frame * fullSide_ + cv::Point2d(full_.width - 1, full_.height - 1) * 0.5;
}

} // namespace mirvak
