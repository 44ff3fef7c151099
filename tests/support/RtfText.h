#pragma once

#include <optional>
#include <string>

/// The running text of an RTF document as a simple reader sees it: paragraphs end with a line feed, tabs are
/// tabs, fonts and styles are skipped. Nothing when groups do not match, a byte is not ASCII, a character
/// comes from a code page or half a surrogate pair stands alone.
std::optional<std::u32string> rtfText(const std::string& rtf);

/// What of it is highlighted in a colour of the document's table, a line feed between two such runs.
std::optional<std::u32string> rtfHighlighted(const std::string& rtf);

/// Characters to insert, delete or replace to make one text of the other (Levenshtein 1965).
size_t editDistance(const std::u32string& a, const std::u32string& b);
