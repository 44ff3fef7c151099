#pragma once

#include "Pieces.h"

#include <vector>

namespace mirvak {

/// Pieces of lines that stand below each other, without a neighbour beside them: a paragraph of a column, a
/// column of a table, a heading.
struct TextBlock
{
    cv::Rect box;
    std::vector<Piece> rows; ///< from the top
    size_t marks = 0;

    /// Several rows, most of them as long as those around them: running text. Cells of a table are of any
    /// length.
    bool isProse = false;
    /// Letters below each other at the distance of letters: a line that runs upward or downward.
    bool isSideways = false;
};

using Blocks = std::vector<const TextBlock*>; ///< borrowed

std::vector<TextBlock> textBlocksOf(const Pieces& pieces, int markHeight);

} // namespace mirvak
