#pragma once

#include "Chance.h"

namespace sheetmap {

constexpr int groundKinds = 7;
constexpr int patternedGrounds = 3; ///< the last ones of them have a pattern

/// A desk of colours, grain, pattern and print that no one would choose, seen from straight above: whoever
/// knows sheets on all of them knows a sheet and not a desk. CV_32FC3, 0 to 255.
cv::Mat makeGround(cv::Size size, Chance& chance, bool withPatterns = true);
/// Of a colour that desks have.
Colour groundColour(Chance& chance);

} // namespace sheetmap
