#pragma once

#include <string>

namespace base64 {

/// With a carriage return and a line feed after every 76 characters.
std::string encode(const char* data, int length);
/// Ends at the first line break: that, and everything behind it, counts into `outLength` but is not decoded.
/// @param outLength bytes decoded, and one for each byte of `data` that was given up
std::string decode(const char* data, int length, int& outLength);

} // namespace base64
