#pragma once

#include "LineJoin.h"
#include "ReadPage.h"

namespace mirvak {

/// Marks the words that should be looked at, because words that are read like them are often wrong. What a
/// confidence is worth depends on the script and on whether a dictionary has the word, since each model has a
/// scale of its own; words in another script than the page's were read by another model, or worn.
/// @param isWord the dictionaries of all languages in use
void markUnsure(ReadPage& page, const IsWord& isWord);

} // namespace mirvak
