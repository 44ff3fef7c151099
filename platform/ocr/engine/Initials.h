#pragma once

#include "AreaReader.h"

namespace mirvak {

/// Reads the large letters with which chapters and articles begin. Beside such a letter two to five lines
/// leave room, and the recogniser takes it for a picture. It is brought to the size of its word, set before
/// it and read with it, and only believed when the rest is read as it was. Scripts with spaces.
void readInitials(
    ReadPage& page, const PlainPicture& plain, const Marks& marks, TextModel& model, const Limit& limit);

} // namespace mirvak
