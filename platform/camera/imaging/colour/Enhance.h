#pragma once

#include "Image.h"

namespace mirvak {

/// The colours of the page itself, a little livelier: paper white under even light of no colour, stray light
/// taken away, black print black. Where no paper is found, the brightest stands
/// for it; a frame without light stays as it is.
void enhanceColour(Image& image);

} // namespace mirvak
