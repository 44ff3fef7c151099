#pragma once

#include "QuadFinder.h"

/// What an outline is worth by its edges alone. Any thread.
namespace mirvak::quadRating {

constexpr float leastCoverage = 0.4F;  ///< of each side, for an outline to be one
constexpr double borderCoverage = 0.5; ///< of a side that lies outside the picture and cannot be seen

/// Fills in what the lines under its sides say: `edges`, `darker`, `confidence` and `score`, which stay 0 for
/// what cannot be an outline. `quad`: with corners, sides and area.
void rate(QuadFinder::Quad& quad, QuadFinder::Search search);

/// The score of an outline with perfect corners and contrast. `covered`, `leastCovered`: shares of its sides
/// that follow an edge, their mean and least; `area`: share of the picture.
double mostScore(double covered, double leastCovered, double area);

} // namespace mirvak::quadRating
