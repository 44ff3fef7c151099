#pragma once

#include "Document.h"
#include "PageScale.h"

namespace mirvak {

/// Where text stands, px.
struct Area
{
    int left = 0, right = 0;
    int width() const { return right - left; }
};

/// Tab stops for rows that follow each other, so that what stands in one column on the page does in the
/// document: flush left, or flush right where the right edges agree better, as those of numbers do.
/// A last cell at the right end of the area is flush right.
/// @param rows the lines' cells (Type.h); @param em px, of their type
std::vector<std::vector<TabStop>> tabStops(const std::vector<std::vector<std::vector<ReadWord>>>& rows,
                                           const Area& area,
                                           double em,
                                           const PageScale& scale);

} // namespace mirvak
