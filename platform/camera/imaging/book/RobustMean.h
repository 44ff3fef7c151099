#pragma once

#include <vector>

namespace mirvak {

/// 0 of nothing.
double medianOf(std::vector<double> values);

/// Tukey's weight of a value that lies so many standard deviations off; 0 far away.
double tukeyWeight(double deviations);

} // namespace mirvak
