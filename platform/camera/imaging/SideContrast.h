#pragma once

#include "QuadFinder.h"

#include <opencv2/core.hpp>

#include <array>

namespace mirvak {

/// Looks at both sides of a quadrilateral's edges: a page differs from the desk all along, where the ruling
/// of a table has the same paper on both sides.
class SideContrast
{
public:
    explicit SideContrast(const std::array<cv::Mat, 3>& planes) : planes_(planes) {}

    /// 0 to 1: how sure it is that the quadrilateral is the outline of a page.
    double confidenceOf(const QuadFinder::Quad& quad) const;

private:
    struct Contrast
    {
        double share = 0; ///< of the samples that differ clearly
        double steady =
            0; ///< length of the mean difference over the mean length: 1 when it is the same all along
        double brighter = 0; ///< mean brightness inside minus outside, levels
    };
    cv::Vec3d colourAt(const cv::Point2d& start, const cv::Point2d& step) const;
    Contrast along(const cv::Point2d& from, const cv::Point2d& to) const;

    const std::array<cv::Mat, 3>& planes_;
};

} // namespace mirvak
