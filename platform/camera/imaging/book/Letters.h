#pragma once

#include "BookLook.h"

#include <vector>

namespace mirvak {

/// A mark of ink of the size of a letter; pixels of the look.
struct Letter
{
    cv::Rect box;
    double centre() const { return box.x + 0.5 * (box.width - 1); }
    double top() const { return box.y - 0.5; }
    double bottom() const { return box.y + box.height - 0.5; }
};

struct Letters
{
    std::vector<Letter> all; ///< from left to right
    double height = 0;       ///< median, pixels of the look; about the height of an x
};

/// Connected marks that are darker than what lies around them.
Letters findLetters(const BookLook& look);

} // namespace mirvak
