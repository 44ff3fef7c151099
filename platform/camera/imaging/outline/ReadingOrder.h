#pragma once

#include "Outline.h"

#include <vector>

namespace mirvak {

/// Puts sheets into the order in which people read: what lies mostly beside the topmost one is its row, from
/// the left; then the next row.
void sortForReading(std::vector<Outline>& sheets);

} // namespace mirvak
