#pragma once

#include "Marks.h"

namespace mirvak {

/// The runs of text that show best what a page says: long ones, from different places of it, in no order. A
/// run follows its line where that rises or bends, and ends between two words at most `longest` px from its
/// begin.
std::vector<cv::Rect> sampleRows(const Marks& marks, int wanted, int longest);

} // namespace mirvak
