#pragma once

#include "Reduction.h"

#include <opencv2/core.hpp>

#include <array>

namespace mirvak {

/// The reduced copy in which outlines are searched, its noise smoothed. Keeps its buffers; one thread at a
/// time.
class SmallLook
{
public:
    using Planes = std::array<cv::Mat, 3>;

    /// The side to which the longer one of a picture is reduced, and the least a picture needs to hold a
    /// page.
    static constexpr int longestSide = 640, leastSize = 64;
    static bool canHoldPage(const cv::Mat& rgb);

    const Planes& build(const cv::Mat& rgb);
    const Planes& planes() const { return smooth_; }
    const Reduction& reduction() const { return reduction_; }
    /// Corners in the picture itself, the one nearest to its top left first; of two equal ones the upper.
    std::array<cv::Point2d, 4> inPicture(std::array<cv::Point2d, 4> corners) const;

private:
    Reduction reduction_;
    Planes smooth_;
};

/// Red, green and blue of the pixel there. @return false outside the picture
bool colourAt(const SmallLook::Planes& planes, const cv::Point2d& point, std::array<int, 3>& colour);

} // namespace mirvak
