#include "PageScale.h"

#include <algorithm>
#include <cmath>

namespace mirvak {

namespace {

constexpr double twipsPerInch = 1440, twipsPerPoint = 20;
constexpr double smallestBody = 7, largestBody = 18, usualBody = 11; // points
constexpr int longestPaper = 31680;                                  // twips; word processors know no more

} // namespace

PageScale::PageScale(const ReadPage& page, double bodyEm)
    : twipsPerPx_(twipsPerInch / (page.dpi > 0 ? page.dpi : 300))
{
    const double points = bodyEm * twipsPerPx_ / twipsPerPoint;
    if (bodyEm > 0 && (points < smallestBody || points > largestBody))
        twipsPerPx_ *= usualBody / points;
    const int longest = std::max({page.width, page.height, 1});
    twipsPerPx_ = std::min(twipsPerPx_, static_cast<double>(longestPaper) / longest);
}

int PageScale::twips(double px) const
{
    return static_cast<int>(std::lround(px * twipsPerPx_));
}

int PageScale::halfPoints(double em) const
{
    return std::clamp(static_cast<int>(std::lround(em * twipsPerPx_ / twipsPerPoint * 2)), 8, 144);
}

} // namespace mirvak
