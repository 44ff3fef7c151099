#pragma once

#include "MarkedText.h"
#include "ReadPage.h"

#include <functional>

namespace mirvak {

/// Whether a dictionary has the word; UTF-8.
using IsWord = std::function<bool(const std::string&)>;

/// The words as running text: spaces between words of scripts that have them, none beside ideographs.
/// Punctuation behind ideographs takes their full width, as it is printed. Unsure words are marked, the
/// spaces around them are not.
MarkedText joinWords(const std::vector<ReadWord>& words);

/// Appends the next line of a paragraph. A hyphen that only breaks a word is taken out: one between letters,
/// the next line beginning small. Where the word may have been hyphenated anyway ("thirty-one"), the
/// dictionary decides. A word of two lines is marked as a whole when one half is.
void appendLine(MarkedText& paragraph, const MarkedText& line, const IsWord& isWord);

} // namespace mirvak
