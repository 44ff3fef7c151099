#pragma once

#include <opencv2/core.hpp>

#include <array>

namespace mirvak {

/// How much light is missing, 0 to 255, for every level of evened light.
using DarknessTable = std::array<unsigned char, 256>;

/// How dark a colour stands out of white paper: half by its brightness, half in the channel where it does
/// most. So yellow counts as ink, and the pale yellow of a highlighter does not.
inline int standsOut(const unsigned char* rgb, int darkness, const DarknessTable& table)
{
    const unsigned char least = rgb[0] < rgb[1] ? rgb[0] : rgb[1];
    return (darkness + table[least < rgb[2] ? least : rgb[2]]) / 2;
}

/// Finds evenly coloured areas without print in them that stand out enough to be black as a whole.
/// @param rgb     CV_8UC3, evened light, reduced
/// @param window  pixels: what is narrower is no area
/// @return CV_8UC1, same size: from which standsOut() on pixels are black there, half of the area's own; 0
///         where there is no such area
cv::Mat solidAreas(const cv::Mat& rgb, const DarknessTable& table, int window);

} // namespace mirvak
