#pragma once

#include "Marks.h"
#include "ReadPage.h"

namespace mirvak {

/// Puts words into small letters that were read as capitals, or begin with one, and are no higher than the
/// small letters of their line. Small worn print has letters whose capitals differ in nothing but their size;
/// the recogniser brings every line to one height and guesses. @param marks of the picture that was read
void makeSmall(ReadPage& page, const Marks& marks);

} // namespace mirvak
