#pragma once

#include "Marks.h"

namespace mirvak {

/// What kind of letters the marks of a page look like.
enum class ScriptLook { latin, cyrillic, ideographs };

/// By the heights of the marks alone, which costs nothing: of Latin small letters two in five rise or hang
/// beyond the others, of Cyrillic ones one in seven, and more where there are numbers; parts of ideographs
/// have any height, and few rise beyond the most frequent one. A guess that tells which model is worth being
/// asked first, no more: print in capitals or of numbers alone counts as Latin. Reentrant.
ScriptLook scriptLookOf(const Marks& marks);

} // namespace mirvak
