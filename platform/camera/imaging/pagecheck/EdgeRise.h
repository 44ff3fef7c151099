#pragma once

#include <vector>

namespace mirvak {

/// How wide the edges of a line of brightness values are, from 10 to 90 % of the step (the usual measure of
/// sharpness, ISO 12233), appended to `widths` in values. An edge's contrast over its steepest slope tells it
/// for any Gaussian lens; the line of a pen, which has no level ground at its end, counts as wide as an edge
/// of the same lens would be. A perfect edge is 2 wide. Edges below `leastContrast` levels are left out.
void findEdgeRises(const std::vector<float>& values, float leastContrast, std::vector<float>& widths);

} // namespace mirvak
