#pragma once

#include <string_view>

namespace mirvak {

enum class Charset { latin1, shiftJis, gb18030 };

/// The character set in which bytes that are not UTF-8 make the likeliest text: each character counts by how
/// usual its class is there (JIS X 0208, GB 2312 with its two levels of characters, ISO 8859-1), and by its
/// neighbours. What a set cannot decode is not guessed. Reentrant.
Charset likeliestCharset(std::string_view bytes);

} // namespace mirvak
