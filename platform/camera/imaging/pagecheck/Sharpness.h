#pragma once

#include "ShotLook.h"

#include <array>
#include <optional>
#include <vector>

namespace mirvak {

/// How sharp a page is, by the width of its own sides and of the edges of its print: whatever is printed
/// there, and where nothing is, the sharpest of its edges are as wide as the lens, the focus and the movement
/// make them. Keeps its buffers; one thread at a time.
class Sharpness
{
public:
    /// @return pixels from 10 to 90 % of an edge, in the direction in which they are wider; nothing where too
    /// few edges stand out of the noise (standard deviation, levels) to tell.
    std::optional<double> measure(const ShotLook& look, double noise);

private:
    void lookAtSides(const ShotLook& look, float leastContrast);
    void lookAtPrint(const ShotLook& look, float leastContrast);

    void closePlace();

    // Of changes from left to right, and from top to bottom.
    std::array<std::vector<float>, 2> here_;   ///< at the present place
    std::array<std::vector<float>, 2> places_; ///< the sharpest of each place
    std::vector<float> line_;
};

/// The width from which the edges of a page count as blurred, pixels: what even a weak lens and colour filter
/// of that resolution stay below.
double blurLimit(int longestSide);

} // namespace mirvak
