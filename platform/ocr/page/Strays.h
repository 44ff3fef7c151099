#pragma once

#include "Pieces.h"

#include <vector>

namespace mirvak {

/// Takes marks in a margin off the line that they stand beside: a stroke of a picture, dirt. They stand apart
/// at its end, and no line above or below reaches so far. Each becomes a piece of its own. Reentrant.
/// @param markHeight, pitch px, as of Pieces
void partStrays(std::vector<Piece>& pieces, int markHeight, int pitch);

} // namespace mirvak
