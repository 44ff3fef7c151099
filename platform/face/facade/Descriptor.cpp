#include "Descriptor.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace face {

namespace {

double product(const Descriptor& a, const Descriptor& b)
{
    return std::inner_product(a.begin(), a.end(), b.begin(), 0.0);
}

} // namespace

int scoreOf(const Descriptor& a, const Descriptor& b)
{
    constexpr double full = 100;
    constexpr double rounding = 1e-4; // of single precision: a face is like itself by 100, not 99
    const double lengths = std::sqrt(product(a, a) * product(b, b));
    if (!(lengths > 0) || !std::isfinite(lengths))
        return 0;
    return static_cast<int>(std::clamp(full * product(a, b) / lengths + rounding, 0.0, full));
}

} // namespace face
