#pragma once

#include "Marks.h"

#include <vector>

namespace mirvak {

/// A part of the page that is read by itself.
struct TextArea
{
    cv::Rect box;
    std::vector<cv::Rect> foreign; ///< marks of other areas that reach into the box
    bool isSideways = false;       ///< its lines run upward or downward
};

/// Divides a page into areas of text in reading order: columns from left to right, what stands over or under
/// them before or after, notes and captions by themselves. Tables, forms and receipts are not torn apart,
/// because their rows are read across. Recursive cuts through white space (Nagy and Seth, Hierarchical
/// representation of optically scanned documents, 1984) between blocks of text (TextBlocks.h).
std::vector<TextArea> areasOf(const Marks& marks);

} // namespace mirvak
