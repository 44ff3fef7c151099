#pragma once

#include "Columns.h"
#include "ReadPage.h"

#include <vector>

namespace mirvak {

/// A part of an area, as wide as that, in which print was left out.
struct Strip
{
    cv::Rect box;
    std::vector<size_t> lines; ///< that stand in it
};

/// Where letters of an area are in none of the words that were read there. From the top, apart from each
/// other. When they are most of the area, they are one strip: the area itself.
std::vector<Strip> leftOut(const TextArea& area, const ReadBlock& lines, const Marks& marks);

/// Only those that stand where no line was read at all.
std::vector<Strip> lostLines(const TextArea& area, const ReadBlock& lines, const Marks& marks);

} // namespace mirvak
