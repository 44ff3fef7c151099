#pragma once

#include <string>

/// One space for any white space, none beside ideographs and at the end: lines are broken differently.
std::u32string plain(const std::u32string& text);
