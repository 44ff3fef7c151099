#pragma once

#include "PageLook.h"

namespace mirvak {

/// Sums over a block of slopes in two looks, the second one shifted.
struct SlopeSums
{
    long long across[3] = {}; ///< first squared, second squared, first times second
    long long down[3] = {};
    int pixels = 0;

    /// Energy of the first and of the second look, a pixel.
    double first() const { return pixels > 0 ? static_cast<double>(across[0] + down[0]) / pixels : 0; }
    double second() const { return pixels > 0 ? static_cast<double>(across[1] + down[1]) / pixels : 0; }
    /// Half the energy of the difference: the noise, when both show the same.
    double noise() const;
    /// How alike the block is, -1 to 1: the worse of the two directions' correlations, because the lines of
    /// two texts lie alike and their letters do not. A direction with less than a tenth of the energy, or
    /// with less than `floor`, has no say. 1 when nothing is left to compare.
    double likeness(double floor) const;
};

/// Adds up over the part of `area` that lies in both pictures; over every `rowStep`-th row of it.
SlopeSums slopeSums(
    const PageLook::Level& now, const PageLook::Level& then, cv::Rect area, cv::Point shift, int rowStep = 1);

} // namespace mirvak
