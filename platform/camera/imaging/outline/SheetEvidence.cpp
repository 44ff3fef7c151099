#include "SheetEvidence.h"

#include "SideEvidence.h"

#include <algorithm>
#include <cmath>

namespace mirvak {

namespace {

using Corners = std::array<cv::Point2d, 4>;

constexpr double containedSlack = 4; // pixels

double cross(const cv::Point2d& a, const cv::Point2d& b)
{
    return a.x * b.y - a.y * b.x;
}

bool isInside(const Corners& part, const Corners& whole)
{
    for (const cv::Point2d& corner : part) {
        for (size_t i = 0; i < 4; ++i) {
            const cv::Point2d way = whole[(i + 1) % 4] - whole[i];
            if (cross(way, corner - whole[i]) < -containedSlack * cv::norm(way))
                return false;
        }
    }
    return true;
}

double edgeWorth(const QuadFinder::Edges& edges)
{
    return std::max(0.0, 0.5 * edges.leastCovered + 0.5 * edges.corners - 0.5 * edges.overrun);
}

double lopsidedness(const Corners& p)
{
    const auto side = [&](size_t i) { return cv::norm(p[(i + 1) % 4] - p[i]); };
    return std::abs(std::log(side(0) / side(2))) + std::abs(std::log(side(1) / side(3)));
}

Evidence evidenceOf(const QuadFinder::Quad& quad,
                    const SideColours& sides,
                    const SideRegions& regions,
                    double bestScore)
{
    const QuadFinder::Edges& e = quad.edges;
    const auto f = [](double value) { return static_cast<float>(value); };
    return {f(e.covered),
            f(e.leastCovered),
            f(e.corners),
            f(e.leastCorner),
            f(e.overrun),
            f(e.mostOverrun),
            f(e.clear),
            f(e.leastClear),
            f(e.steady),
            f(e.leastSteady),
            f(std::tanh(e.rise / 40)),
            f(std::tanh(e.leastRise / 20)),
            f(e.brighter == 1),
            f(e.seen < 4),
            f(std::sqrt(quad.area)),
            f(lopsidedness(quad.corners)),
            f(sides.insideSmooth),
            f(sides.leastInsideSmooth),
            f(sides.outsideSmooth),
            f(sides.known),
            f(sides.mostKnown),
            f(sides.insideDesk),
            f(sides.outsideDesk),
            f(sides.leastOutsideDesk),
            f(sides.oneTint),
            f(sides.tintStep),
            f(regions.step),
            f(regions.leastStep),
            f(regions.steady),
            f(regions.leastSteady),
            f(regions.smoother),
            f(regions.leastSmoother),
            f(regions.insideDetail),
            f(regions.insideSpread),
            f(quad.score / bestScore),
            0,
            0,
            1};
}

} // namespace

void gatherEvidence(const std::vector<QuadFinder::Quad>& quads,
                    const SmallLook::Planes& planes,
                    const RegionField& regions,
                    const DeskColours& desk,
                    std::vector<Evidence>& evidence)
{
    constexpr size_t nested = evidenceCount - 3, holding = evidenceCount - 2;
    double bestScore = 1e-9;
    for (const QuadFinder::Quad& quad : quads)
        bestScore = std::max(bestScore, quad.score);
    evidence.clear();
    for (const QuadFinder::Quad& quad : quads)
        evidence.push_back(evidenceOf(quad,
                                      colourEvidence(quad.corners, planes, desk),
                                      regionEvidence(quad.corners, regions),
                                      bestScore));
    for (size_t i = 0; i < quads.size(); ++i) {
        for (size_t k = 0; k < quads.size(); ++k) {
            if (quads[k].area <= 1.1 * quads[i].area || !isInside(quads[i].corners, quads[k].corners))
                continue;
            const auto inner = static_cast<float>(edgeWorth(quads[i].edges));
            const auto outer = static_cast<float>(edgeWorth(quads[k].edges));
            evidence[i][nested] = std::max(evidence[i][nested], outer);
            evidence[k][holding] = std::max(evidence[k][holding], inner);
        }
    }
}

void gatherPageEvidence(const std::vector<QuadFinder::Quad>& quads,
                        const SheetMap& map,
                        const std::vector<Evidence>& evidence,
                        std::vector<PageEvidence>& pageEvidence)
{
    pageEvidence.clear();
    const auto share = static_cast<float>(std::sqrt(map.share()));
    float most = 1e-6F;
    for (size_t i = 0; i < quads.size(); ++i) {
        const SheetMap::Fit fit = map.fitOf(quads[i].corners);
        const auto overlap = static_cast<float>(fit.overlap);
        most = std::max(most, overlap);
        PageEvidence& all = pageEvidence.emplace_back();
        const auto end = std::copy(evidence[i].begin(), evidence[i].end() - 1, all.begin());
        const std::array<double, 7> said{
            fit.overlap, fit.filled, fit.holds, fit.border, fit.leastBorder, fit.step, fit.leastStep};
        std::copy(said.begin(), said.end(), end);
        all[pageEvidenceCount - 3] = share;
        all[pageEvidenceCount - 2] = overlap;
        all[pageEvidenceCount - 1] = 1;
    }
    for (PageEvidence& all : pageEvidence) // beside the one that agrees best
        all[pageEvidenceCount - 2] /= most;
}

} // namespace mirvak
