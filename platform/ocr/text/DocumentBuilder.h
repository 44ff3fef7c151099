#pragma once

#include "Document.h"
#include "LineJoin.h"

namespace mirvak {

/// Makes running text of the lines of a page: paragraphs with their indents and alignment, headings by the
/// size of their letters, rows of a table with tab stops, on paper of the page's size and margins.
Document buildDocument(const ReadPage& page, const IsWord& isWord = {});

} // namespace mirvak
