#pragma once

#include "ShotLook.h"

namespace mirvak {

/// Standard deviation of the noise, levels, where the page is most even: by a second difference that knows no
/// slopes (Immerkaer, Computer Vision and Image Understanding 64, 1996), in the quietest quarter of places.
double noiseOf(const ShotLook& look);

/// Whether there is so little light that a page comes out grainy: nothing in the picture is bright, though a
/// camera opens up as far as it can, or the noise is a large part of what is there. A black page in good
/// light is not dark in this sense.
bool isTooDark(const ShotLook& look, double noise, bool alreadySo);

} // namespace mirvak
