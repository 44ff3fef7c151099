#pragma once

#include "Image.h"

namespace mirvak {

/// Paper becomes clean white under even light; colours stay as they are against it, and thin print gets back
/// what the lens took from it.
void removeBackground(Image& image);

/// As removeBackground(), with darkened and gently sharpened strokes: a page to read and to print.
void processDocument(Image& image);

} // namespace mirvak
