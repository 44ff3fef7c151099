#pragma once

#include <string>

namespace mirvak {

/// What is no UTF-8 becomes U+FFFD, one for each byte that does not fit.
std::u32string fromUtf8(const std::string& utf8);
std::string toUtf8(const std::u32string& text);

/// Written without spaces between words, and in a font of its own: Han, Kana, their punctuation, full-width
/// forms.
bool isIdeographic(char32_t c);
/// Letters of the Latin, Greek and Cyrillic scripts.
bool isLetter(char32_t c);
bool isCyrillic(char32_t c);
bool isDigit(char32_t c);
bool isLowercase(char32_t c);
/// The small letter of a capital one; anything else as it is.
char32_t lowercase(char32_t c);
/// A letter, an ideograph or a digit: no mere sign.
bool isReadable(char32_t c);

} // namespace mirvak
