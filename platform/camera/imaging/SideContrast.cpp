#include "SideContrast.h"

#include <algorithm>
#include <cmath>

namespace mirvak {

namespace {

constexpr int samples = 40;
constexpr double nearest = 2;   // pixels from the edge, where its own blur has ended
constexpr int depth = 4;        // pixels that are averaged
constexpr double clearStep = 6; // levels of the colour that differs most

} // namespace

cv::Vec3d SideContrast::colourAt(const cv::Point2d& start, const cv::Point2d& step) const
{
    cv::Vec3d sum(0, 0, 0);
    const cv::Size size = planes_[0].size();
    for (int i = 0; i < depth; ++i) {
        const cv::Point2d p = start + step * (nearest + i);
        const int x = std::clamp(cvRound(p.x), 0, size.width - 1),
                  y = std::clamp(cvRound(p.y), 0, size.height - 1);
        for (int c = 0; c < 3; ++c)
            sum[c] += planes_[static_cast<size_t>(c)].ptr(y)[x];
    }
    return sum / static_cast<double>(depth);
}

SideContrast::Contrast SideContrast::along(const cv::Point2d& from, const cv::Point2d& to) const
{
    const cv::Point2d way = to - from;
    const double length = std::max(1.0, cv::norm(way));
    const cv::Point2d inward(-way.y / length, way.x / length); // clockwise with y downwards: inside is right
    cv::Vec3d mean(0, 0, 0);
    double lengths = 0;
    int clear = 0;
    for (int i = 0; i < samples; ++i) {
        const cv::Point2d p = from + way * ((i + 0.5) / samples);
        const cv::Vec3d difference = colourAt(p, inward) - colourAt(p, -inward);
        const double most =
            std::max({std::abs(difference[0]), std::abs(difference[1]), std::abs(difference[2])});
        clear += most >= clearStep ? 1 : 0;
        mean += difference;
        lengths += cv::norm(difference);
    }
    Contrast contrast;
    contrast.share = static_cast<double>(clear) / samples;
    contrast.steady = cv::norm(mean) / std::max(1.0, lengths);
    contrast.brighter = (mean[0] + 2 * mean[1] + mean[2]) / (4 * samples);
    return contrast;
}

double SideContrast::confidenceOf(const QuadFinder::Quad& quad) const
{
    double shares = 0, leastShare = 1, steady = 0;
    int brighter = 0, darker = 0, seen = 0;
    for (size_t i = 0; i < 4; ++i) {
        if (quad.sides[i].line->isBorder())
            continue;
        const Contrast contrast = along(quad.corners[i], quad.corners[(i + 1) % 4]);
        shares += contrast.share;
        leastShare = std::min(leastShare, contrast.share);
        steady += contrast.steady;
        brighter += contrast.brighter > 0 ? 1 : 0;
        darker += contrast.brighter < 0 ? 1 : 0;
        ++seen;
    }
    const double onePolarity = std::max(brighter, darker) == seen ? 1 : 0;
    const double contrast = 0.5 * shares / seen + 0.2 * leastShare + 0.3 * steady / seen;
    return std::clamp(quad.score * (0.35 + 0.6 * contrast + 0.05 * onePolarity), 0.0, 1.0);
}

} // namespace mirvak
