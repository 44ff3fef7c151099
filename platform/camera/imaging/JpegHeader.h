#pragma once

#include "Codec.h"

namespace mirvak {

/// What a JPEG file says about its picture outside the coded pixels.
struct JpegHeader
{
    int orientation = 1; ///< Exif 2.3, tag 0x0112: 1 upright to 8
    double dpi = 0;      ///< 0 when the file names none
    bool adobe = false;  ///< written by software that stores CMYK inverted
};

/// Reads the marker segments in front of the first scan. Never reads beyond the bytes, whatever they say.
JpegHeader readJpegHeader(const Bytes& bytes);

/// Puts the resolution into the JFIF header (ITU-T T.871) that the encoder wrote at the start of the file.
void setJfifDensity(Bytes& jpeg, double dpi);

} // namespace mirvak
