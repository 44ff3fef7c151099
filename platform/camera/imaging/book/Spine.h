#pragma once

#include "BookLook.h"

#include <optional>

namespace mirvak {

/// The line of a spine in the frame's coordinates (CylinderModel.h).
struct Spine
{
    cv::Point2d middle; ///< the point of it at half of the frame's height
    double turn = 0;    ///< radians clockwise from upright
    double depth = 0;   ///< how much darker it is than what lies beside it, 0 to 1
};

/// Looks for the dark valley between two pages: the line, turned by up to 15 degrees, along which most places
/// are darker than the paper on both sides. Nothing when there is no such line. Reentrant.
std::optional<Spine> findSpine(const BookLook& look);

} // namespace mirvak
