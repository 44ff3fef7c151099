#include "BookShape.h"

#include <algorithm>
#include <cmath>

namespace deskpictures {
namespace {

constexpr double stepMm = 0.1;
constexpr double reserveMm = 20; // the tables reach beyond the page
constexpr double curlReachMm = 25;

// x e^(1-x): steep at the spine, one soft crest, then a long run down; the block of leaves lifts the outer
// part.
double curve(const Bend& bend, double fromSpine)
{
    const double x = fromSpine / bend.crestAtMm;
    const double height = bend.crestMm * x * std::exp(1 - x) + bend.blockMm * (1 - std::exp(-x));
    if (bend.curlMm <= 0 || fromSpine <= bend.curlFromMm)
        return height;
    const double beyond = (fromSpine - bend.curlFromMm) / curlReachMm;
    return height + bend.curlMm * beyond * beyond;
}

double interpolate(const std::vector<double>& table, double fromSpine)
{
    const double at = std::clamp(fromSpine / stepMm, 0.0, table.size() - 1.001);
    const auto i = static_cast<size_t>(at);
    return table[i] + (at - i) * (table[i + 1] - table[i]);
}

} // namespace

BookShape::BookShape(double pageWidthMm, const Bend& bend)
{
    const auto count = static_cast<size_t>((pageWidthMm + reserveMm) / stepMm);
    m_height.push_back(curve(bend, 0));
    m_along.push_back(0);
    for (size_t i = 1; i < count; ++i) {
        m_height.push_back(curve(bend, i * stepMm));
        m_along.push_back(m_along.back() + std::hypot(stepMm, m_height[i] - m_height[i - 1]));
    }
    m_halfWidth = fromSpine(pageWidthMm);
}

double BookShape::height(double fromSpine) const
{
    return interpolate(m_height, fromSpine);
}

double BookShape::slope(double fromSpine) const
{
    return (height(fromSpine + stepMm) - height(std::max(0.0, fromSpine - stepMm))) /
           (stepMm + std::min(stepMm, fromSpine));
}

double BookShape::alongPage(double fromSpine) const
{
    return fromSpine < 0 ? fromSpine : interpolate(m_along, fromSpine);
}

double BookShape::fromSpine(double alongPage) const
{
    const auto above = std::upper_bound(m_along.begin(), m_along.end() - 1, std::max(0.0, alongPage));
    const auto i = above - m_along.begin();
    return (i - 1 + (alongPage - m_along[i - 1]) / (m_along[i] - m_along[i - 1])) * stepMm;
}

} // namespace deskpictures
