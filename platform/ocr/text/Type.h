#pragma once

#include "ReadPage.h"

namespace mirvak {

/// Size of a line's type in px: the em square, which its point size counts.
double emOf(const ReadLine& line);

/// Most of the line is ideographs.
bool isIdeographicLine(const ReadLine& line);

/// The em of most of the page's text, px; 0 for a page without any.
double bodyEm(const ReadPage& page);

/// A line whose words stand in cells: gaps wider than any space between words. The cells, from the left, each
/// a part of the words; one cell for ordinary text.
std::vector<std::vector<ReadWord>> cellsOf(const ReadLine& line);

} // namespace mirvak
