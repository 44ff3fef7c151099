#pragma once

#include <opencv2/core.hpp>

#include <array>
#include <vector>

namespace mirvak {

/// A small copy of a picture for looking at instead of reading every pixel of it. Keeps its buffers, so that
/// a stream of pictures allocates nothing after the first. One thread at a time.
class Reduction
{
public:
    /// Reduces by the whole factor that brings the longer side nearest to `longestSide`. A reduced pixel is
    /// the mean of samples spread evenly over its block, not of the whole block: that reads less than half
    /// of the picture and leaves the noise of six to eight pixels' mean.
    void build(const cv::Mat& rgb, int longestSide);

    /// Pixels of the picture per reduced pixel, both ways.
    int factor() const { return factor_; }
    /// CV_8UC1, red, green, blue; all of one size.
    const std::array<cv::Mat, 3>& planes() const { return planes_; }
    cv::Size size() const { return planes_[0].size(); }

    /// Coordinates count pixel centres: (0, 0) is the middle of the first pixel in both pictures.
    cv::Point2d toFull(const cv::Point2d& reduced) const
    {
        return {(reduced.x + 0.5) * factor_ - 0.5, (reduced.y + 0.5) * factor_ - 0.5};
    }
    cv::Point2d toReduced(const cv::Point2d& full) const
    {
        return {(full.x + 0.5) / factor_ - 0.5, (full.y + 0.5) / factor_ - 0.5};
    }

private:
    int factor_ = 1;
    std::array<cv::Mat, 3> planes_;
    std::vector<unsigned short> rowSum_, colours_; ///< of a row of blocks
};

} // namespace mirvak
