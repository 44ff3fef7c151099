#include "QuadRating.h"

#include <algorithm>
#include <cmath>

namespace mirvak::quadRating {

namespace {

constexpr double leastCutOffArea =
    0.15; // of a page that runs out of the picture: smaller things do at any desk

// What the edges of an outline are worth: shares of its sides and ends that follow them, less what runs on.
constexpr double coveredWorth = 0.4, leastCoveredWorth = 0.25, cornerWorth = 0.35, overrunPrice = 0.5;

/// How well one side follows an edge; the ends are those at its first and second corner.
struct SideFit
{
    Stretch whole;
    double firstEnd = 0, secondEnd = 0, overrun = 0;
};

// The edge of a page ends at its corners; that of a desk, a table's ruling or another sheet runs on.
double overrunOf(const EdgeLine& line, double from, double to, QuadFinder::Search search)
{
    const bool alone = search == QuadFinder::Search::page;
    const double reach = alone ? std::clamp(0.2 * (to - from), 10.0, 40.0) : 5, gap = alone ? 4 : 1;
    const auto covered = [&](double a, double b) {
        a = std::max(a, line.tBegin());
        b = std::min(b, line.tEnd());
        return b - a < 0.5 * reach ? 0.0 : line.coveredBetween(a, b);
    };
    return 0.5 * (covered(from - gap - reach, from - gap) + covered(to + gap, to + gap + reach));
}

SideFit fitOf(const QuadFinder::Side& side, QuadFinder::Search search)
{
    SideFit fit;
    if (side.line->isBorder()) {
        fit.whole.covered = borderCoverage;
        fit.firstEnd = fit.secondEnd = 1;
        return fit;
    }
    const double from = std::min(side.from, side.to), to = std::max(side.from, side.to);
    // Rounded corners and the picture's border hide the very end.
    const double skip = 3, end = std::max(12.0, 0.12 * (to - from));
    const auto clipped = [&](double a, double b) {
        return side.line->coveredBetween(std::max(a, side.line->tBegin()), std::min(b, side.line->tEnd()));
    };
    fit.whole = side.line->between(from, to);
    fit.firstEnd = clipped(from + skip, from + end);
    fit.secondEnd = clipped(to - end, to - skip);
    if (side.from > side.to)
        std::swap(fit.firstEnd, fit.secondEnd);
    fit.overrun = overrunOf(*side.line, from, to, search);
    return fit;
}

QuadFinder::Edges edgesOf(const QuadFinder::Quad& quad, QuadFinder::Search search)
{
    QuadFinder::Edges edges;
    std::array<SideFit, 4> fits;
    for (size_t i = 0; i < 4; ++i) {
        const QuadFinder::Side& side = quad.sides[i];
        fits[i] = fitOf(side, search);
        const Stretch& whole = fits[i].whole;
        edges.covered += whole.covered / 4;
        edges.leastCovered = std::min(edges.leastCovered, whole.covered);
        edges.overrun += fits[i].overrun / 4;
        edges.mostOverrun = std::max(edges.mostOverrun, fits[i].overrun);
        if (side.line->isBorder())
            continue;
        ++edges.seen;
        edges.clear += whole.clear;
        edges.leastClear = std::min(edges.leastClear, whole.clear);
        edges.steady += whole.steady;
        edges.leastSteady = std::min(edges.leastSteady, whole.steady);
        // Walking clockwise, the line's own direction tells on which hand its normal points.
        const double rise = side.to < side.from ? whole.rise : -whole.rise;
        edges.rise += rise;
        edges.leastRise = std::min(edges.leastRise, rise);
        edges.brighter += rise > 0 ? 1 : 0;
    }
    for (double* sum : {&edges.clear, &edges.steady, &edges.rise, &edges.brighter})
        *sum /= edges.seen;
    for (size_t i = 0; i < 4; ++i) {
        const double corner = std::min(fits[(i + 3) % 4].secondEnd, fits[i].firstEnd);
        edges.corners += corner / 4;
        edges.leastCorner = std::min(edges.leastCorner, corner);
    }
    return edges;
}

// How much the page differs from what lies around it, over the sides that can be seen: 0 to 1.
double contrastOf(const QuadFinder::Edges& edges)
{
    const double contrast = 0.3 * edges.clear + 0.15 * edges.leastClear +
                            0.3 * std::min(1.0, 1.4 * edges.steady) +
                            0.25 * std::min(1.0, 2.5 * edges.leastSteady);
    // Pages are brighter than desks. A sheet that is darker all around may be a cover, or a box on a page;
    // one that is now the one and now the other is mostly put together from different things.
    const double likely = edges.brighter == 1 ? 1 : edges.brighter == 0 ? 0.85 : 0.8;
    return likely * std::clamp((contrast - (edges.brighter == 1 ? 0.35 : 0.45)) / 0.4, 0.0, 1.0);
}

double sizeWorth(double area)
{
    return 1 + 0.5 * std::sqrt(area);
}

} // namespace

double mostScore(double covered, double leastCovered, double area)
{
    return (coveredWorth * covered + leastCoveredWorth * leastCovered + cornerWorth) * sizeWorth(area);
}

void rate(QuadFinder::Quad& quad, QuadFinder::Search search)
{
    quad.edges = edgesOf(quad, search);
    const QuadFinder::Edges& edges = quad.edges;
    quad.darker = edges.brighter == 0;
    const bool cutOff = edges.seen < 4;
    if (edges.leastCovered < leastCoverage || (cutOff && quad.area < leastCutOffArea))
        return;
    const double followed = std::clamp(coveredWorth * edges.covered + leastCoveredWorth * edges.leastCovered +
                                           cornerWorth * edges.corners - overrunPrice * edges.overrun,
                                       0.0,
                                       1.0);
    const double contrast = contrastOf(edges);
    quad.confidence = followed * contrast;
    // The one page is judged again by its colours; here it must only be among the better ones.
    const double worth =
        search == QuadFinder::Search::page ? followed * (0.25 + 0.75 * contrast) : quad.confidence;
    quad.score = worth * sizeWorth(quad.area);
}

} // namespace mirvak::quadRating
