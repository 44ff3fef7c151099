#pragma once

#include "TextBlocks.h"

#include <vector>

namespace mirvak {

/// The lines of what stands on one side of a gutter, whatever blocks their pieces have come into: where ink
/// is worn or spaces are wide, the lines of a column fall into pieces that make no blocks of prose.
/// Reentrant.
class RunningText
{
public:
    explicit RunningText(const Blocks& blocks);

    /// Most lines are filled with text from one side of the column to the other. Those of a table leave white
    /// between its cells. @param markHeight px
    bool fills(int markHeight) const;
    /// px, the middles of the lines, from the top
    std::vector<int> levels() const;
    /// px, the usual distance from line to line; 0 for a single one
    int pitch() const;

private:
    struct Line
    {
        cv::Rect box;
        int covered = 0; ///< px, of the width by pieces
    };
    void add(const Piece& piece);
    int widthNear(size_t line) const;

    std::vector<Line> lines_; ///< from the top
};

} // namespace mirvak
