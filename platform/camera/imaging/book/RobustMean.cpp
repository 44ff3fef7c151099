#include "RobustMean.h"

#include <algorithm>
#include <cmath>

namespace mirvak {

namespace {
constexpr double tukey = 4.685; // of the standard deviation: 95 % as good as least squares
}

double medianOf(std::vector<double> values)
{
    if (values.empty())
        return 0;
    const auto middle = values.begin() + static_cast<long>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

double tukeyWeight(double deviations)
{
    const double share = deviations / tukey;
    return std::abs(share) >= 1 ? 0 : (1 - share * share) * (1 - share * share);
}

} // namespace mirvak
