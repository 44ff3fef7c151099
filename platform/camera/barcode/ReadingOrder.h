#pragma once

#include "CodeReader.h"

namespace mirvak {

/// Sorts from top to bottom. Codes beside each other make a row and stand in it from left to right; beside
/// means that one overlaps the row's first code by a quarter of the lower of the two, at least.
void sortForReading(std::vector<Code>& codes);

} // namespace mirvak
