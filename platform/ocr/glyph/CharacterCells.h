#pragma once

#include <opencv2/core.hpp>

#include <vector>

namespace mirvak {

/// A character of a line as far as the recogniser knows it.
struct RoughCharacter
{
    double middle = 0;        ///< px from the left; may be half a character wrong
    bool isIdeograph = false; ///< stands in a square of its own, as all others of its line do
    bool isDoubtful = false;  ///< may be none at all
};

/// Where the characters of a line of ideographs stand. The recogniser hardly knows, since it reads a line as
/// one movement; but squares of one size and the white between them tell: of all ways to cut the line the one
/// is taken that cuts least ink and leaves the squares equal (dynamic programming, Bellman 1957). Reentrant.
/// @param line 8-bit grey, dark on white
/// @param characters from the left to the right
/// @return for each character a strip of the line from top to bottom, without width for one that is not
/// there; empty when no pitch can be told
std::vector<cv::Rect> characterCells(const cv::Mat& line, const std::vector<RoughCharacter>& characters);

} // namespace mirvak
