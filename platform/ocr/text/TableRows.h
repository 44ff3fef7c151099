#pragma once

#include "Document.h"
#include "PageScale.h"

namespace mirvak {

/// Tab stops for rows that follow each other, so that what stands in one column on the page does in the
/// document: flush left, or flush right where the right edges agree better, as those of numbers do.
/// @param rows the lines' cells (Type.h); @param left px, of the margin.
std::vector<std::vector<TabStop>> tabStops(const std::vector<std::vector<std::vector<ReadWord>>>& rows,
                                           int left,
                                           double em,
                                           const PageScale& scale);

} // namespace mirvak
