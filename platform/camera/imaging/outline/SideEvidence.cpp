#include "SideEvidence.h"

#include <algorithm>
#include <cmath>

namespace mirvak {

namespace {

using Colour = std::array<int, 3>;
using Corners = std::array<cv::Point2d, 4>;

constexpr int along = 24;           // samples along a side
constexpr double beside = 6;        // pixels from the side, where its blur has ended
constexpr double sameShade = 0.06;  // of the brightness, in each colour
constexpr double knownShare = 0.15; // of the samples outside, for a colour to be usual there

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

} // namespace

SideColours colourEvidence(const Corners& corners, const SmallLook::Planes& planes, const DeskColours& desk)
{
    SideColours sides;
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
        const double known = shareKnown(inside, outside);
        sides.outsideSmooth += smoothness(outside);
        sides.known += known;
        sides.mostKnown = std::max(sides.mostKnown, known);
        const double deskShare = share(outside, isDesk);
        sides.outsideDesk += deskShare;
        sides.leastOutsideDesk = std::min(sides.leastOutsideDesk, deskShare);
        sides.tintStep += std::min(1.0, 10 * tintDistance(paper[i], medianOf(outside)));
    }
    for (double* sum : {&sides.outsideSmooth, &sides.known, &sides.outsideDesk, &sides.tintStep})
        *sum /= std::max(1, outsides);
    double most = 0;
    for (size_t i = 0; i < 4; ++i)
        most = std::max(most, tintDistance(paper[i], paper[(i + 1) % 4]));
    sides.oneTint = std::exp(-15 * most);
    return sides;
}

SideRegions regionEvidence(const Corners& corners, const RegionField& regions)
{
    constexpr int samples = 8;
    constexpr double within = 14; // pixels inside a side
    SideRegions sides;
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

} // namespace mirvak
