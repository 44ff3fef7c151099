#pragma once

#include <opencv2/core.hpp>

#include <array>
#include <vector>

namespace mirvak {

/// What a small picture is like at large: its colours and its amount of detail, each averaged over more than
/// a centimetre. The two sides of a line of print, of a ruling or of a cloth's pattern are then alike, those
/// of a sheet's edge are not. Keeps its buffers; one thread at a time.
class RegionField
{
public:
    /// `planes`: three CV_8UC1 of one size; `change`: CV_16SC1 of that size, how much the colour changes.
    void build(const std::array<cv::Mat, 3>& planes, const cv::Mat& change);

    /// Red, green, blue and detail beyond a line at `point`, in the direction of its unit normal, less what
    /// lies before it; levels. All 0 where there is nothing on one side.
    std::array<int, 4> riseAcross(const cv::Point2d& point, const cv::Point2d& normal) const;
    /// What lies there; the nearest that is known when the point is outside.
    std::array<int, 4> at(const cv::Point2d& point) const;

    /// How far apart two regions are, levels: the colour that differs most, and the detail.
    static int distance(const std::array<int, 4>& rise);

private:
    cv::Mat cells_, smooth_; ///< CV_8UC4
    cv::Size size_;
    std::vector<int> sums_; ///< of a row of cells
    std::vector<unsigned short> columns_;
};

} // namespace mirvak
