#pragma once

#include "Codec.h"

namespace mirvak {

bool looksLikePng(const Bytes& bytes);
/// As readImage(); every colour type and depth; interlaced too, but not with 16 bits.
std::optional<Image> decodePng(const Bytes& bytes);
/// Fast compression. A picture of pure black and white is stored with one bit a pixel, a grey one with eight.
Bytes encodePng(const Image& image);

} // namespace mirvak
