#pragma once

#include "Image.h"

namespace mirvak {

/// Black strokes on white, as wide as they are: over evened light a place is black when it is nearer to the
/// darkest close by than to the paper or tint that it lies on (after Bernsen, Dynamic thresholding of
/// grey-level images, 1986), by the light that is missing. Areas are black or white as a whole, single specks
/// go.
void threshold(Image& image);

} // namespace mirvak
