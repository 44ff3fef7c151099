#pragma once

#include "TextBlocks.h"

#include <optional>
#include <vector>

namespace mirvak {

/// White between two parts of which each is read by itself.
struct Gutter
{
    Blocks left, right;
    Blocks between; ///< captions and the like that stand in the gutter, with text on both sides
};

/// The widest white strip from top to bottom that parts columns of running text, notes from their text, or
/// two addresses. Nothing where the rows are read across it, as those of tables and forms are.
std::optional<Gutter> findGutter(const Blocks& blocks, int markHeight);

/// Whether there is any white strip from top to bottom, but for what may stand in it.
bool mayHaveGutter(const Blocks& blocks, int markHeight);

} // namespace mirvak
