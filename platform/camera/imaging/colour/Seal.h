#pragma once

#include "Image.h"

namespace mirvak {

enum class SealColour { red, blue };

/// White paper, a strong seal and dark text, also where the seal lies over it.
void strengthenSeal(Image& image, SealColour colour);

} // namespace mirvak
