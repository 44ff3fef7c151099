#include "QuadCheck.h"

#include "Outline.h"
#include "SmallLook.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace mirvak {

namespace {

constexpr int samples = 48;
constexpr double inside = 10, outside = 28; // pixels from the side; the shadow of a fold is narrower
constexpr double alike = 0.14;              // of the brightness, in each colour
constexpr int beyondEnd = 24, bend = 7;     // steps of two pixels along, pixels across
constexpr double pageShare = 0.7;           // of the samples along a side
constexpr double goesOn = 0.75, ends = 0.4; // shares of the side's length

using Planes = SmallLook::Planes;

bool closeTo(const std::array<int, 3>& a, const std::array<int, 3>& b, double tolerance)
{
    for (size_t c = 0; c < 3; ++c) {
        if (std::abs(a[c] - b[c]) > tolerance * std::max(a[c], b[c]))
            return false;
    }
    return true;
}

using Strip = std::vector<std::array<int, 3>>;

// Colours along a side, a little inside.
Strip stripAlong(const Planes& planes, const cv::Point2d& from, const cv::Point2d& to)
{
    const cv::Point2d way = to - from;
    const double length = std::max(1.0, cv::norm(way));
    const cv::Point2d inward(-way.y / length, way.x / length);
    Strip strip;
    std::array<int, 3> colour{};
    for (int i = 0; i < samples; ++i) {
        if (colourAt(planes, from + way * ((i + 0.5) / samples) + inward * inside, colour))
            strip.push_back(colour);
    }
    return strip;
}

std::array<int, 3> medianOf(const Strip& strip)
{
    std::array<int, 3> median{};
    std::vector<int> values(strip.size());
    for (size_t c = 0; c < 3 && !strip.empty(); ++c) {
        std::transform(
            strip.begin(), strip.end(), values.begin(), [&](const auto& colour) { return colour[c]; });
        std::nth_element(
            values.begin(), values.begin() + static_cast<ptrdiff_t>(values.size() / 2), values.end());
        median[c] = values[values.size() / 2];
    }
    return median;
}

double shareCloseTo(const Strip& strip, const std::array<int, 3>& colour)
{
    const auto close = std::count_if(
        strip.begin(), strip.end(), [&](const auto& one) { return closeTo(one, colour, alike); });
    return strip.empty() ? 0 : static_cast<double>(close) / static_cast<double>(strip.size());
}

// Share of the side behind which the colour is that before it; 0 where the picture ends.
double shareAlike(const Planes& planes, const cv::Point2d& from, const cv::Point2d& to)
{
    const cv::Point2d way = to - from;
    const double length = std::max(1.0, cv::norm(way));
    const cv::Point2d inward(-way.y / length, way.x / length);
    int same = 0;
    for (int i = 0; i < samples; ++i) {
        const cv::Point2d p = from + way * ((i + 0.5) / samples);
        std::array<int, 3> here{}, there{};
        if (!colourAt(planes, p + inward * inside, here) || !colourAt(planes, p - inward * outside, there))
            continue;
        same += closeTo(here, there, alike) ? 1 : 0;
    }
    return static_cast<double>(same) / samples;
}

// Whether the side that comes from `from` is followed by an edge beyond its end; not quite straight near a
// fold.
bool edgeGoesOn(const EdgeField& edges, const cv::Point2d& from, const cv::Point2d& end)
{
    const cv::Point2d way = (end - from) / std::max(1.0, cv::norm(end - from)), across(-way.y, way.x);
    int followed = 0;
    for (int t = 1; t <= beyondEnd; ++t) {
        float most = 0;
        for (int k = -bend; k <= bend; ++k)
            most = std::max(most, edges.changeAcross(end + way * (2 * t + 4) + across * k, across));
        followed += most >= 2 * edges.threshold() ? 1 : 0;
    }
    return followed >= 0.7 * beyondEnd;
}

} // namespace

bool isHalfOfSpread(const Planes& planes, const EdgeField& edges, const std::array<cv::Point2d, 4>& corners)
{
    int ended = 0;
    std::vector<size_t> continued;
    for (size_t i = 0; i < 4; ++i) {
        const double share = shareAlike(planes, corners[i], corners[(i + 1) % 4]);
        ended += share <= ends ? 1 : 0;
        if (share >= goesOn)
            continued.push_back(i);
    }
    if (continued.size() != 1 || ended != 3)
        return false;
    const size_t fold = continued.front();
    const cv::Point2d &first = corners[fold], &second = corners[(fold + 1) % 4];
    const cv::Point2d &afterSecond = corners[(fold + 2) % 4], &beforeFirst = corners[(fold + 3) % 4];
    const bool longSide = cv::norm(second - first) > 0.95 * cv::norm(afterSecond - second);
    return longSide && edgeGoesOn(edges, beforeFirst, first) && edgeGoesOn(edges, afterSecond, second);
}

bool paperReachesBorder(const Planes& planes, const std::array<cv::Point2d, 4>& corners)
{
    std::array<Strip, 4> strips;
    std::array<bool, 4> cut{};
    for (size_t i = 0; i < 4; ++i) {
        const cv::Point2d& to = corners[(i + 1) % 4];
        strips[i] = stripAlong(planes, corners[i], to);
        cut[i] = liesOnBorder(corners[i], to, planes[0].size(), 1);
    }
    for (size_t i = 0; i < 4; ++i) {
        if (!cut[i])
            continue;
        // An even desk beyond the page's edge is as even as paper. But paper goes on along the other sides.
        const std::array<int, 3> colour = medianOf(strips[i]);
        int alikeSides = 0;
        for (size_t k = 0; k < 4; ++k)
            alikeSides += !cut[k] && shareCloseTo(strips[k], colour) >= pageShare ? 1 : 0;
        if (alikeSides < 2)
            return false;
    }
    return true;
}

} // namespace mirvak
