#include "QuadOverlap.h"

#include <algorithm>
#include <cmath>

namespace mirvak {

namespace {

/// Room for what four cuts make of any quadrilateral: each adds at most half of the corners; of a convex one
/// it makes eight.
struct Polygon
{
    std::array<cv::Point2d, 20> corners;
    size_t count = 0;

    void add(const cv::Point2d& corner) { corners[count++] = corner; }
};

double cross(const cv::Point2d& a, const cv::Point2d& b)
{
    return a.x * b.y - a.y * b.x;
}

/// The part on the right hand of the way from one point to the other, which is inside of what runs clockwise.
Polygon cut(const Polygon& polygon, const cv::Point2d& from, const cv::Point2d& to)
{
    const auto depthOf = [&](const cv::Point2d& point) { return cross(to - from, point - from); };
    Polygon rest;
    for (size_t i = 0; i < polygon.count; ++i) {
        const cv::Point2d &here = polygon.corners[i], &next = polygon.corners[(i + 1) % polygon.count];
        const double depth = depthOf(here), nextDepth = depthOf(next);
        if (depth >= 0)
            rest.add(here);
        if ((depth < 0) != (nextDepth < 0))
            rest.add(here + (next - here) * (depth / (depth - nextDepth)));
    }
    return rest;
}

} // namespace

double areaOf(const std::array<cv::Point2d, 4>& corners)
{
    return 0.5 * std::abs(cross(corners[2] - corners[0], corners[3] - corners[1]));
}

double sharedArea(const std::array<cv::Point2d, 4>& a, const std::array<cv::Point2d, 4>& b)
{
    Polygon shared;
    for (const cv::Point2d& corner : a)
        shared.add(corner);
    for (size_t i = 0; i < 4; ++i)
        shared = cut(shared, b[i], b[(i + 1) % 4]);
    double twice = 0;
    for (size_t i = 2; i < shared.count; ++i)
        twice += cross(shared.corners[i - 1] - shared.corners[0], shared.corners[i] - shared.corners[0]);
    return 0.5 * std::abs(twice);
}

double overlapOf(const std::array<cv::Point2d, 4>& a, const std::array<cv::Point2d, 4>& b)
{
    const double shared = sharedArea(a, b), joined = areaOf(a) + areaOf(b) - shared;
    return joined > 0 ? std::min(1.0, shared / joined) : 0;
}

} // namespace mirvak
