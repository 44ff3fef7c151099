#pragma once

#include <string>

namespace mirvak {

/// The bytes of a code as text: valid UTF-8 in which every NUL is the visible sign for it (U+2400), so that
/// nothing that treats the text as a C string cuts it. Other control characters stay. Bytes that are not
/// UTF-8 are taken for what makes the likeliest text of them: Chinese (GB 18030), Japanese (Shift-JIS) or
/// Western European (ISO 8859-1). With `isText` the code itself has said that it is UTF-8; what breaks it is
/// replaced by U+FFFD. Reentrant.
std::string payloadText(const std::string& bytes, bool isText);

} // namespace mirvak
