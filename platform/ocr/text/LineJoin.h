#pragma once

#include "ReadPage.h"

#include <functional>

namespace mirvak {

/// Whether a dictionary has the word; UTF-8.
using IsWord = std::function<bool(const std::string&)>;

/// The words as running text: spaces between words of scripts that have them, none beside ideographs.
/// Punctuation behind ideographs takes their full width, as it is printed.
std::u32string joinWords(const std::vector<ReadWord>& words);

/// Appends the next line of a paragraph. A hyphen that only breaks a word is taken out: one between letters,
/// the next line beginning small. Where the word may have been hyphenated anyway ("thirty-one"), the
/// dictionary decides.
void appendLine(std::u32string& paragraph, const std::u32string& line, const IsWord& isWord);

} // namespace mirvak
