#pragma once

#include "Image.h"

namespace mirvak {

/// Black strokes on white by a local threshold (Sauvola and Pietikäinen, Adaptive document image
/// binarization, 2000) over evened light. Large black areas stay full, single specks go.
void threshold(Image& image);

} // namespace mirvak
