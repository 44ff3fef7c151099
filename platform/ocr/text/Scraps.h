#pragma once

#include "ReadPage.h"

namespace mirvak {

/// Takes out of a page what is left of rules, logos, signatures and dust: words without a letter that the
/// recogniser was not sure of or that are as small as a speck, and lines and blocks in which hardly anything
/// is sure. @param markHeight px, the usual height of a mark of print
void dropScraps(ReadPage& page, int markHeight);

} // namespace mirvak
