#pragma once

#include <array>

namespace face {

/// What the recogniser says of a face, a direction: the numbers form a vector of length 1.
using Descriptor = std::array<float, 192>;

/// 100 times the cosine between two descriptors, rounded down, within 0 to 100. 0 for one without a
/// direction, as zeros or numbers that are none. Rounded down, 50 is never less than the limit.
int scoreOf(const Descriptor& a, const Descriptor& b);

} // namespace face
