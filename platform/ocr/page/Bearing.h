#pragma once

#include "Marks.h"

namespace mirvak {

enum class Bearing { across, upward, unclear };

/// Which way rows run: a letter stands nearer to the next one of its row than to those of the next row.
Bearing bearingOf(const Marks& marks);

} // namespace mirvak
