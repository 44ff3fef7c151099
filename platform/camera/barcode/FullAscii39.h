#pragma once

#include <string>
#include <string_view>

namespace mirvak {

/// The text of a Code 39 that writes all of ASCII with pairs: a sign ($, %, / or +) and a letter (ISO/IEC
/// 16388, annex A). Nothing in the code tells that it does: it is believed of one in which each of these
/// signs begins a valid pair and at least two of them stand for small letters. Everything else comes back as
/// it is. Reentrant.
std::string fullAscii39(std::string_view text);

} // namespace mirvak
