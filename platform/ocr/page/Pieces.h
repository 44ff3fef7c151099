#pragma once

#include "Marks.h"

#include <vector>

namespace mirvak {

/// A piece of a line: marks that follow each other on one level at the distance of words, with no white
/// between them that goes on above or below.
struct Piece
{
    cv::Rect box;
    std::vector<cv::Rect> marks; ///< from the left
};

struct Pieces
{
    std::vector<Piece> all;
    int pitch = 0; ///< px, from one line to the next; 0 when no line stands over another
};

/// Divides what is printed on a page at white strips that are as high as several lines: gutters, margins, the
/// space between the columns of a table. The strips are the union of all white rectangles of that width and
/// height (Breuel, Two geometric algorithms for layout analysis, 2002, covers the white with the largest
/// ones; morphological openings give all at once). The narrower a strip, the higher it must be: word spaces
/// stand below each other too, but seldom for long.
Pieces piecesOf(const Marks& marks);

} // namespace mirvak
