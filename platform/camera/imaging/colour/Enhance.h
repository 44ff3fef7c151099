#pragma once

#include "Image.h"

namespace mirvak {

/// Full contrast and livelier colours. Brightness is stretched for all three colours alike, so that hues
/// stay, and nothing is pushed beyond what a channel can hold.
void enhanceColour(Image& image);

} // namespace mirvak
