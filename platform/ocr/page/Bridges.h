#pragma once

#include "Pieces.h"

#include <vector>

namespace mirvak {

/// Parts lines that were joined over a gutter too short to be a white strip: a caption of a line or two
/// stands so close to the columns on its sides. What tells is an edge: several lines above or below end where
/// the white begins, or begin where it ends, and none of them goes over it. Reentrant.
/// @param markHeight, pitch px, as of Pieces
void partBridges(std::vector<Piece>& pieces, int markHeight, int pitch);

} // namespace mirvak
