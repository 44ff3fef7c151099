#pragma once

#include "Reduction.h"

#include <opencv2/core.hpp>

namespace mirvak {

/// Reduced copies of a picture of an open book, and the frame's coordinates (CylinderModel.h) in them.
class BookLook
{
public:
    /// @param rgb  CV_8UC3
    explicit BookLook(const cv::Mat& rgb);

    cv::Size fullSize() const { return full_; }
    /// CV_8UC3, longest side about 1500 pixels: letters can be told in it.
    const cv::Mat& colours() const { return colours_; }
    /// CV_8UC1 of the same size: the green of it.
    const cv::Mat& green() const { return green_; }
    /// Pixels of colours() in the length of the frame's longer side.
    double side() const { return side_; }
    cv::Point2d toFrame(const cv::Point2d& pixel) const;
    cv::Point2d toPixel(const cv::Point2d& frame) const;
    /// A pixel of the full picture.
    cv::Point2d toFull(const cv::Point2d& frame) const;

private:
    cv::Size full_;
    cv::Mat colours_, green_;
    double side_ = 1, fullSide_ = 1;
    int factor_ = 1;
};

} // namespace mirvak
