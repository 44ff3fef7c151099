#include "PageAspect.h"

#include <algorithm>
#include <cmath>

namespace mirvak {

namespace {

// The limits of the lenses that are built into such cameras and telephones.
constexpr double shortestFocal = 0.55, longestFocal = 3.0;

} // namespace

double pageAspect(const std::array<cv::Point2d, 4>& corners, const cv::Size& picture)
{
    const cv::Point2d middle(0.5 * (picture.width - 1), 0.5 * (picture.height - 1));
    const double unit = std::max(picture.width, picture.height);
    // The paper's names: m1 top left, m2 top right, m3 bottom left, m4 bottom right.
    const auto scaled = [&](size_t i) {
        const cv::Point2d p = (corners[i] - middle) / unit;
        return cv::Vec3d(p.x, p.y, 1);
    };
    const cv::Vec3d m1 = scaled(0), m2 = scaled(1), m3 = scaled(3), m4 = scaled(2);
    const double k2 = m1.cross(m4).dot(m3) / m2.cross(m4).dot(m3);
    const double k3 = m1.cross(m4).dot(m2) / m3.cross(m4).dot(m2);
    const cv::Vec3d n2 = k2 * m2 - m1, n3 = k3 * m3 - m1;
    double focal = usualFocal;
    const double depth = n2[2] * n3[2];
    if (std::abs(depth) > 1e-3) {
        const double squared = -(n2[0] * n3[0] + n2[1] * n3[1]) / depth;
        if (squared > shortestFocal * shortestFocal && squared < longestFocal * longestFocal)
            focal = std::sqrt(squared);
    }
    const auto length = [&](const cv::Vec3d& n) { return std::hypot(std::hypot(n[0], n[1]) / focal, n[2]); };
    const double aspect = length(n2) / length(n3);
    // Corners that no rectangle can have end here as nonsense.
    return std::isfinite(aspect) ? std::clamp(aspect, 0.02, 50.0) : 1.0;
}

} // namespace mirvak
