#pragma once

#include "Symbology.h"

#include <string_view>

namespace mirvak {

// What keeps readings out that are none: lines of text and patterns look like bars often enough to be
// decoded, above all as the kinds of codes that have no check digit of their own.

/// Whether a code of that kind may hold these bytes: check digits, and the shortest contents in use.
bool isPlausible(Symbology symbology, std::string_view bytes);
/// How many scan lines of one view must have read the same.
int linesNeeded(Symbology symbology);
/// How many views must have read the same.
int passesNeeded(Symbology symbology);

} // namespace mirvak
