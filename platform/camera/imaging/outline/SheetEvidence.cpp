#include "SheetEvidence.h"

#include <algorithm>
#include <cmath>

namespace mirvak {

namespace {

using Colour = std::array<int, 3>;
using Corners = std::array<cv::Point2d, 4>;

constexpr int along = 24;             // samples along a side
constexpr double beside = 6;          // pixels from the side, where its blur has ended
constexpr double farBeside = 14;      // pixels: beyond a thin line, or the rim of a shadow
constexpr double usualShare = 0.0015; // of the rim, for a colour to be the desk's
constexpr double sameShade = 0.06;    // of the brightness, in each colour
constexpr double knownShare = 0.15;   // of the samples outside, for a colour to be usual there
constexpr double containedSlack = 4;  // pixels

double cross(const cv::Point2d& a, const cv::Point2d& b)
{
    return a.x * b.y - a.y * b.x;
}

bool isSameColour(const Colour& a, const Colour& b)
{
    for (size_t c = 0; c < 3; ++c) {
        if (std::abs(a[c] - b[c]) > 4 + sameShade * std::max(a[c], b[c]))
            return false;
    }
    return true;
}

struct Strip
{
    std::array<Colour, along> colours;
    int count = 0;
};

/// Along a side from `from` to `to`; `inward` pixels inside it, outside when negative.
Strip stripBeside(const SmallLook::Planes& planes,
                  const cv::Point2d& from,
                  const cv::Point2d& to,
                  double inward)
{
    const cv::Point2d way = to - from;
    const cv::Point2d away = cv::Point2d(-way.y, way.x) * (inward / std::max(1.0, cv::norm(way)));
    Strip strip;
    for (int i = 0; i < along; ++i) {
        if (colourAt(planes,
                     from + way * ((i + 0.5) / along) + away,
                     strip.colours[static_cast<size_t>(strip.count)]))
            ++strip.count;
    }
    return strip;
}

template <class Test> double share(const Strip& strip, Test test)
{
    const auto end = strip.colours.begin() + strip.count;
    return strip.count ? static_cast<double>(std::count_if(strip.colours.begin(), end, test)) / strip.count
                       : 0;
}

Colour medianOf(const Strip& strip)
{
    Colour median{};
    std::array<int, along> values;
    for (size_t c = 0; strip.count && c < 3; ++c) {
        for (int i = 0; i < strip.count; ++i)
            values[static_cast<size_t>(i)] = strip.colours[static_cast<size_t>(i)][c];
        const auto middle = values.begin() + strip.count / 2;
        std::nth_element(values.begin(), middle, values.begin() + strip.count);
        median[c] = *middle;
    }
    return median;
}

/// Share of samples that differ little from the one before: light and shadow change slowly, pattern and print
/// do not.
double smoothness(const Strip& strip)
{
    int smooth = 0;
    for (int i = 1; i < strip.count; ++i)
        smooth +=
            isSameColour(strip.colours[static_cast<size_t>(i)], strip.colours[static_cast<size_t>(i - 1)])
                ? 1
                : 0;
    return strip.count > 1 ? static_cast<double>(smooth) / (strip.count - 1) : 0;
}

/// Share of the one strip that has colours usual in the other.
double shareKnown(const Strip& one, const Strip& other)
{
    return share(one, [&](const Colour& colour) {
        return share(other, [&](const Colour& there) { return isSameColour(colour, there); }) >= knownShare;
    });
}

/// Distance of colours without brightness: of the shares of red and blue.
double tintDistance(const Colour& a, const Colour& b)
{
    const double sumA = a[0] + a[1] + a[2] + 30, sumB = b[0] + b[1] + b[2] + 30;
    return std::abs((a[0] + 10) / sumA - (b[0] + 10) / sumB) +
           std::abs((a[2] + 10) / sumA - (b[2] + 10) / sumB);
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

struct Sides
{
    double insideSmooth = 0, leastInsideSmooth = 1, outsideSmooth = 0, leastOutsideSmooth = 1;
    double known = 0, mostKnown = 0, insideDesk = 0, outsideDesk = 0, leastOutsideDesk = 1, oneTint = 0,
           tintStep = 0, farDesk = 0;
};

Sides lookBeside(const Corners& corners, const SmallLook::Planes& planes, const DeskColours& desk)
{
    Sides sides;
    std::array<Colour, 4> paper;
    int outsides = 0;
    const auto isDesk = [&](const Colour& colour) { return desk.contain(colour); };
    for (size_t i = 0; i < 4; ++i) {
        const cv::Point2d &from = corners[i], &to = corners[(i + 1) % 4];
        const Strip inside = stripBeside(planes, from, to, beside);
        const Strip outside = stripBeside(planes, from, to, -beside);
        paper[i] = medianOf(inside);
        const double smooth = smoothness(inside);
        sides.insideSmooth += smooth / 4;
        sides.leastInsideSmooth = std::min(sides.leastInsideSmooth, smooth);
        sides.insideDesk += share(inside, isDesk) / 4;
        if (outside.count < along / 2)
            continue;
        ++outsides;
        const double outsideSmooth = smoothness(outside), known = shareKnown(inside, outside);
        sides.outsideSmooth += outsideSmooth;
        sides.leastOutsideSmooth = std::min(sides.leastOutsideSmooth, outsideSmooth);
        sides.known += known;
        sides.mostKnown = std::max(sides.mostKnown, known);
        const double deskShare = share(outside, isDesk);
        sides.outsideDesk += deskShare;
        sides.leastOutsideDesk = std::min(sides.leastOutsideDesk, deskShare);
        sides.tintStep += std::min(1.0, 10 * tintDistance(paper[i], medianOf(outside)));
        sides.farDesk += share(stripBeside(planes, from, to, -farBeside), isDesk);
    }
    for (double* sum :
         {&sides.outsideSmooth, &sides.known, &sides.outsideDesk, &sides.tintStep, &sides.farDesk})
        *sum /= std::max(1, outsides);
    double most = 0;
    for (size_t i = 0; i < 4; ++i)
        most = std::max(most, tintDistance(paper[i], paper[(i + 1) % 4]));
    sides.oneTint = std::exp(-15 * most);
    return sides;
}

/// What the regions at both sides of the outline say, levels as shares of 1.
struct Regions
{
    double step = 0, leastStep = 1, steady = 0, leastSteady = 1, smoother = 0, leastSmoother = 1,
           insideDetail = 0, insideSpread = 0;
};

Regions lookAround(const Corners& corners, const RegionField& regions)
{
    constexpr int samples = 8;
    constexpr double within = 14; // pixels inside a side
    Regions sides;
    std::array<std::array<int, 4>, 4> paper{};
    for (size_t i = 0; i < 4; ++i) {
        const cv::Point2d way = corners[(i + 1) % 4] - corners[i];
        const cv::Point2d inward = cv::Point2d(-way.y, way.x) / std::max(1.0, cv::norm(way));
        std::array<int, 4> sum{};
        int size = 0;
        for (int k = 0; k < samples; ++k) {
            const cv::Point2d p = corners[i] + way * ((k + 0.5) / samples);
            const std::array<int, 4> rise = regions.riseAcross(p, inward),
                                     here = regions.at(p + inward * within);
            size += RegionField::distance(rise);
            for (size_t c = 0; c < 4; ++c) {
                sum[c] += rise[c];
                paper[i][c] += here[c];
            }
        }
        const double step = std::tanh(RegionField::distance(sum) / (40.0 * samples));
        const double steady = static_cast<double>(RegionField::distance(sum)) / std::max(1, size);
        const double smoother = std::tanh(-sum[3] / (10.0 * samples));
        sides.step += step / 4;
        sides.leastStep = std::min(sides.leastStep, step);
        sides.steady += steady / 4;
        sides.leastSteady = std::min(sides.leastSteady, steady);
        sides.smoother += smoother / 4;
        sides.leastSmoother = std::min(sides.leastSmoother, smoother);
        sides.insideDetail += std::tanh(paper[i][3] / (20.0 * samples)) / 4;
    }
    for (size_t i = 0; i < 4; ++i) {
        std::array<int, 4> rise = paper[i];
        for (size_t c = 0; c < 4; ++c)
            rise[c] -= paper[(i + 1) % 4][c];
        sides.insideSpread =
            std::max(sides.insideSpread, std::tanh(RegionField::distance(rise) / (60.0 * samples)));
    }
    return sides;
}

double lopsidedness(const Corners& p)
{
    const auto side = [&](size_t i) { return cv::norm(p[(i + 1) % 4] - p[i]); };
    return std::abs(std::log(side(0) / side(2))) + std::abs(std::log(side(1) / side(3)));
}

Evidence
evidenceOf(const QuadFinder::Quad& quad, const Sides& sides, const Regions& regions, double bestScore)
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

void DeskColours::learn(const SmallLook::Planes& planes)
{
    counts_.assign(usual_.size(), 0);
    const cv::Size size = planes[0].size();
    const int rim = std::max(2, std::min(size.width, size.height) / 24);
    int all = 0;
    for (int y = 0; y < size.height; y += 2) {
        const bool wholeRow = y < rim || y >= size.height - rim;
        for (int x = 0; x < size.width; x += 2) {
            if (!wholeRow && x == rim + rim % 2)
                x = std::max(x, (size.width - rim) & ~1);
            ++counts_[indexOf({planes[0].ptr(y)[x], planes[1].ptr(y)[x], planes[2].ptr(y)[x]})];
            ++all;
        }
    }
    for (size_t i = 0; i < counts_.size(); ++i)
        usual_[i] = counts_[i] > usualShare * all;
}

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
        evidence.push_back(evidenceOf(
            quad, lookBeside(quad.corners, planes, desk), lookAround(quad.corners, regions), bestScore));
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
