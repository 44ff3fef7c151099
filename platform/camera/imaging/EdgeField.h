#pragma once

#include <opencv2/core.hpp>

#include <array>
#include <vector>

namespace mirvak {

/// One point of a thin edge.
struct EdgePoint
{
    short x, y;
    short gx, gy; ///< gradient of the strongest colour; a step of one level gives 4
};

/// The edges of a small colour picture. The gradient at a pixel is that of the colour which changes most, so
/// a white page on a yellow desk shows in blue where its brightness would not. Keeps its buffers; one thread
/// at a time.
class EdgeField
{
public:
    /// `planes`: three CV_8UC1 of one size.
    void build(const std::array<cv::Mat, 3>& planes);

    const std::vector<EdgePoint>& points() const { return points_; }
    /// Index into points() + 1 at every pixel, 0 where there is no edge; CV_32S.
    const cv::Mat& index() const { return index_; }
    /// The least gradient that counted as an edge: above the noise and texture of this picture.
    int threshold() const { return threshold_; }
    cv::Size size() const { return index_.size(); }

private:
    void findGradients(const std::array<cv::Mat, 3>& planes);
    void chooseThreshold();
    void thin();

    cv::Mat gx_, gy_, magnitude_; // CV_16S, |gx| + |gy|
    std::vector<short> smoothed_, difference_;
    std::vector<EdgePoint> points_;
    cv::Mat index_;
    int threshold_ = 0;
};

} // namespace mirvak
