#include "SecondEvidence.h"

#include "PageAspect.h"
#include "SideSearch.h"

#include <algorithm>
#include <cmath>

namespace mirvak {

namespace {

constexpr int samples = 24;       // along a side
constexpr int glaring = 248;      // levels, in each colour: a reflection has burnt the edge away
constexpr double usualOff = 0.03; // of the proportions, as a logarithm
constexpr double seen = 0.5;      // of a side

/// 1 for the proportions of a usual sheet.
double usualShape(const QuadFinder::Quad& quad, const cv::Size& picture)
{
    const double shape = std::abs(std::log(pageAspect(quad.corners, picture)));
    double least = 1e9;
    for (const double proportion : usualProportions)
        least = std::min(least, std::abs(shape - std::log(proportion)));
    return std::exp(-least / usualOff);
}

double glareAlong(const SmallLook::Planes& planes, const cv::Point2d& from, const cv::Point2d& to)
{
    int burnt = 0;
    std::array<int, 3> colour{};
    for (int i = 0; i < samples; ++i) {
        const bool isThere = colourAt(planes, from + (to - from) * ((i + 0.5) / samples), colour);
        burnt += isThere && *std::min_element(colour.begin(), colour.end()) >= glaring ? 1 : 0;
    }
    return static_cast<double>(burnt) / samples;
}

struct Sides
{
    double mostBurnt = 0, leastExplained = 1, unseen = 0;
};

Sides sidesOf(const QuadFinder::Quad& quad, const SmallLook::Planes& planes)
{
    Sides sides;
    for (size_t i = 0; i < 4; ++i) {
        const QuadFinder::Side& side = quad.sides[i];
        const auto [from, to] = std::minmax(side.from, side.to);
        const double covered = side.line->isBorder() ? 1 : side.line->coveredBetween(from, to);
        const double burnt = glareAlong(planes, quad.corners[i], quad.corners[(i + 1) % 4]);
        sides.mostBurnt = std::max(sides.mostBurnt, burnt);
        sides.leastExplained = std::min(sides.leastExplained, std::min(1.0, covered + burnt));
        sides.unseen += covered < seen ? 0.25 : 0;
    }
    return sides;
}

} // namespace

void gatherSecondEvidence(const std::vector<QuadFinder::Quad>& quads,
                          const SmallLook::Planes& planes,
                          const std::vector<PageEvidence>& pageEvidence,
                          std::vector<SecondEvidence>& secondEvidence)
{
    secondEvidence.clear();
    for (size_t i = 0; i < quads.size(); ++i) {
        const Sides sides = sidesOf(quads[i], planes);
        SecondEvidence& all = secondEvidence.emplace_back();
        const auto end = std::copy(pageEvidence[i].begin(), pageEvidence[i].end() - 1, all.begin());
        const std::array<double, 5> more{
            usualShape(quads[i], planes[0].size()), sides.mostBurnt, sides.leastExplained, sides.unseen, 1};
        std::copy(more.begin(), more.end(), end);
    }
}

} // namespace mirvak
