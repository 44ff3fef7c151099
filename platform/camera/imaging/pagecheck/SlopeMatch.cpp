#include "SlopeMatch.h"

#include <algorithm>
#include <cmath>

namespace mirvak {

namespace {

// Sixteen-bit products into 32-bit sums: what the compiler makes vector instructions of.
void addRow(const short* a, const short* b, int count, int* sums)
{
    int aa = 0, bb = 0, ab = 0;
    for (int x = 0; x < count; ++x) {
        aa += a[x] * a[x];
        bb += b[x] * b[x];
        ab += a[x] * b[x];
    }
    sums[0] += aa;
    sums[1] += bb;
    sums[2] += ab;
}

double correlation(const long long* sums)
{
    const double energies = static_cast<double>(sums[0]) * static_cast<double>(sums[1]);
    return energies > 0 ? static_cast<double>(sums[2]) / std::sqrt(energies) : 0;
}

} // namespace

double SlopeSums::noise() const
{
    const long long apart = across[0] + across[1] - 2 * across[2] + down[0] + down[1] - 2 * down[2];
    return pixels > 0 ? static_cast<double>(apart) / (2.0 * pixels) : 0;
}

double SlopeSums::likeness(double floor) const
{
    const auto energyAcross = static_cast<double>(std::max(across[0], across[1])),
               energyDown = static_cast<double>(std::max(down[0], down[1]));
    const double least = std::max(floor * pixels, 0.1 * (energyAcross + energyDown));
    return std::min(energyAcross > least ? correlation(across) : 1,
                    energyDown > least ? correlation(down) : 1);
}

SlopeSums slopeSums(
    const PageLook::Level& now, const PageLook::Level& then, cv::Rect area, cv::Point shift, int rowStep)
{
    const cv::Rect whole({}, now.across.size());
    area &= whole & (whole - shift);
    SlopeSums sums;
    if (area.empty())
        return sums;
    int across[3] = {}, down[3] = {};
    int rows = 0;
    for (int y = area.y; y < area.br().y; y += rowStep, ++rows) {
        const int from = area.x + shift.x;
        addRow(now.across.ptr<short>(y) + area.x,
               then.across.ptr<short>(y + shift.y) + from,
               area.width,
               across);
        addRow(now.down.ptr<short>(y) + area.x, then.down.ptr<short>(y + shift.y) + from, area.width, down);
    }
    for (int i = 0; i < 3; ++i) {
        sums.across[i] = across[i];
        sums.down[i] = down[i];
    }
    sums.pixels = rows * area.width;
    return sums;
}

} // namespace mirvak
