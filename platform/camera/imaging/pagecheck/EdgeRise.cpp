#include "EdgeRise.h"

#include <algorithm>
#include <cmath>

namespace mirvak {

namespace {

constexpr float flankEnd = 0.15F;   // of the steepest slope: 95 % of a Gaussian edge lie between
constexpr float edgeFactor = 1.08F; // 10 to 90 % over those 95 % by the steepest slope
constexpr float thinLineFactor =
    1.52F;                          // sqrt(2 pi) / exp(1/2): the same of a line much thinner than the lens
constexpr float turningBack = 0.3F; // of the contrast, within the width of the edge

float slopeAt(const std::vector<float>& values, int i)
{
    const auto at = static_cast<size_t>(i);
    return (values[at + 1] - values[at - 1]) / 2;
}

/// Where the flank ends that is steepest at `peak`, going in `step`.
int flankEndFrom(const std::vector<float>& values, int peak, int step)
{
    const int last = static_cast<int>(values.size()) - 2;
    const float top = slopeAt(values, peak);
    int i = peak;
    while (i + step >= 1 && i + step <= last && slopeAt(values, i) / top > flankEnd)
        i += step;
    return i;
}

/// Whether the values beyond an end of the edge turn back at once, as over a thin line.
bool turnsBack(const std::vector<float>& values, int end, int step, int width, float contrast, float sign)
{
    const auto value = [&](int i) { return values[static_cast<size_t>(i)]; };
    float farthest = 0;
    for (int i = end; i >= 0 && i < static_cast<int>(values.size()) && std::abs(i - end) <= width; i += step)
        farthest = std::max(farthest, sign * (value(end) - value(i)) * static_cast<float>(step));
    return farthest > turningBack * contrast;
}

} // namespace

void findEdgeRises(const std::vector<float>& values, float leastContrast, std::vector<float>& widths)
{
    const auto [least, most] = std::minmax_element(values.begin(), values.end());
    if (least == values.end() || *most - *least < leastContrast)
        return;
    const int last = static_cast<int>(values.size()) - 2;
    int end = 1;
    for (int begin = 1; begin <= last; begin = end) {
        // As long as it goes the same way, up or down, it is one edge: that at its steepest place.
        const bool rises = slopeAt(values, begin) > 0;
        int peak = begin;
        for (end = begin + 1; end <= last && (slopeAt(values, end) > 0) == rises; ++end) {
            if (std::abs(slopeAt(values, end)) > std::abs(slopeAt(values, peak)))
                peak = end;
        }
        const int from = flankEndFrom(values, peak, -1), to = flankEndFrom(values, peak, 1);
        const float contrast = std::abs(values[static_cast<size_t>(to)] - values[static_cast<size_t>(from)]);
        if (contrast < leastContrast)
            continue;
        const float width = edgeFactor * contrast / std::abs(slopeAt(values, peak));
        const float sign = rises ? 1.0F : -1.0F;
        const int reach = static_cast<int>(std::ceil(width));
        const bool isLine = turnsBack(values, from, -1, reach, contrast, sign) ||
                            turnsBack(values, to, 1, reach, contrast, sign);
        widths.push_back(isLine ? thinLineFactor * width : width);
    }
}

} // namespace mirvak
