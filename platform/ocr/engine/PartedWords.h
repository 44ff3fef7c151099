#pragma once

#include "Columns.h"
#include "ReadPage.h"

#include <vector>

namespace mirvak {

/// Parts the lines of a whole page by the areas that it is divided into, one block for each area: from the
/// top down, what stands on one level in one line. The recogniser finds lines well and columns badly, so its
/// words are kept and their order is that of the areas. Words outside of all areas, or read across the edge
/// of one, are left out.
/// @param markHeight px, of the page's marks
std::vector<ReadBlock> partWords(const ReadBlock& lines, const std::vector<TextArea>& areas, int markHeight);

/// Lines in the order of the page, from the top down.
void sortFromTheTop(ReadBlock& lines);

} // namespace mirvak
