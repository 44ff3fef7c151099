#pragma once

#include "Document.h"

namespace mirvak {

/// What becomes of words that the recogniser was not sure of.
enum class Unsure { highlighted, plain };

/// The document in Rich Text Format 1.9. Pure ASCII: everything else is written by its Unicode number, so
/// that no code page of the reading side matters.
std::string toRtf(const Document& document, Unsure unsure = Unsure::highlighted);

} // namespace mirvak
