#pragma once

#include "ReadPage.h"

#include <array>

namespace mirvak {

struct Place
{
    double x = 0, y = 0;
};

/// A word where it stands in the picture of its page.
struct PlacedWord
{
    std::string text; ///< UTF-8, as in running text
    /// Around the word, as high as the print of its line: clockwise from where its upper edge begins, so that
    /// the first two give the direction of reading. Px of the picture as seen.
    std::array<Place, 4> corners;
    float confidence = 0;       ///< 0 to 100
    int block = 0, line = 0;    ///< from 0 over the whole page
    bool isSpaceBehind = false; ///< between it and the next one of its line
};

/// What was read in the picture of a page, in reading order.
struct PlacedWords
{
    int width = 0, height = 0; ///< px of the picture as seen
    std::vector<PlacedWord> words;
};

PlacedWords placeWords(const ReadPage& page);

} // namespace mirvak
