#pragma once

#include "Codec.h"

namespace mirvak {

/// What a PNG file says about its picture, and where the coded pixels lie (PNG specification, ISO/IEC 15948).
struct PngHeader
{
    struct Part
    {
        size_t at = 0, length = 0;
    };

    std::int64_t width = 0; ///< px; 0 when the file does not start as a PNG
    std::int64_t height = 0;
    int bits = 0;       ///< of a sample or a palette index
    int colourType = 0; ///< 0 grey, 2 RGB, 3 palette, 4 grey and 6 RGB with opacity
    bool isInterlaced = false;
    bool isTransparent = false; ///< by a channel of its own, a palette's opacities or one clear colour
    double dpi = 0;             ///< along the rows; 0 when the file names none
    double dpiDown = 0;
    Part palette;            ///< red, green, blue, a byte each
    std::vector<Part> data;  ///< together one zlib stream of filtered rows
    bool isComplete = false; ///< up to its end mark, every chunk with the right checksum
};

/// Walks through the chunks. Never reads beyond the bytes, whatever they say.
PngHeader readPngHeader(const Bytes& bytes);

} // namespace mirvak
