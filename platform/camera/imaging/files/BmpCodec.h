#pragma once

#include "Codec.h"

namespace mirvak {

bool looksLikeBmp(const Bytes& bytes);
/// As readImage(); 1, 4, 8, 16, 24 and 32 bits a pixel without compression or with bit fields.
std::optional<Image> decodeBmp(const Bytes& bytes);
/// 24 bits a pixel, rows from the bottom up.
Bytes encodeBmp(const Image& image);

} // namespace mirvak
