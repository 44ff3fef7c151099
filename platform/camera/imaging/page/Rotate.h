#pragma once

#include "Image.h"

namespace mirvak {

/// Turns by quarter turns clockwise, exactly; swaps width and height as needed. Works into image.spare, so a
/// stream of pictures of one size allocates nothing after the first.
void rotateQuarters(Image& image, int quarterTurns);

/// Turns clockwise about the centre by any angle. Multiples of 90 degrees are exact; other angles grow the
/// picture so that nothing is cut off, on white.
void rotate(Image& image, double degrees);

} // namespace mirvak
