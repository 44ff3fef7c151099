#pragma once

#include "View.h"

#include <vector>

namespace mirvak {

/// A place in the frame that looks like a code.
struct Candidate
{
    cv::RotatedRect box; ///< pixels of the frame; turned as its bars or squares are
    int halvings = 0;    ///< the level on which it stood out: the larger the modules, the higher
    bool isBars = false; ///< edges run in one direction only; it is that of the height of the box
    bool onDark = false; ///< what lies around it is darker than its middle tone
    double likeness = 0; ///< 0 to 1, how much it looks like a code
};

/// Finds the places of a frame that look like bar or matrix codes: many strong edges close together, as much
/// dark as light. Text has the edges too but is mostly paper. The best come first. Reentrant.
std::vector<Candidate> locateCodes(const GreyFrame& frame);

} // namespace mirvak
