#pragma once

#include <opencv2/core.hpp>

#include <array>

/// Tops of desks on which paper is hard to see, seen from straight above.
namespace desktops {

enum class Kind { white, lightGrey, wood, dark, cloth, cuttingMat, patterned };
constexpr std::array<const char*, 7> names{
    "white", "light grey", "wood", "dark", "cloth", "cutting mat", "patterned"};

constexpr double pxPerMm = 2.5;
/// One desk of that kind: colour, grain and pattern by `random`. @return 8-bit RGB, 800 x 640 mm
cv::Mat make(Kind kind, cv::RNG& random);

} // namespace desktops
