#pragma once

#include "Codec.h"

namespace mirvak {

/// What a JPEG file says about its picture outside the coded pixels.
struct JpegHeader
{
    int orientation = 1; ///< Exif 2.3, tag 0x0112: 1 upright to 8
    double dpi = 0;      ///< across the stored rows' length; 0 when the file names none
    double dpiDown = 0;  ///< across the rows; differs from dpi in faxes
    bool adobe = false;  ///< written by software that stores CMYK inverted

    int coding = -1;         ///< 0 baseline, 1 extended, 2 progressive; further ones as ITU-T T.81, table B.1
    int width = 0;           ///< px as stored; 0 without a frame header
    int height = 0;          ///< px as stored
    int bits = 0;            ///< of a sample
    int components = 0;      ///< 1 grey, 3 colour, 4 CMYK
    bool isPlainRgb = false; ///< three components that are not coded as luminance and colour difference
    size_t scanAt = 0;       ///< where the first scan's marker stands; 0 without one
};

/// Reads the marker segments in front of the first scan. Never reads beyond the bytes, whatever they say.
JpegHeader readJpegHeader(const Bytes& bytes);

/// Puts the resolution into the JFIF header (ITU-T T.871) that the encoder wrote at the start of the file.
void setJfifDensity(Bytes& jpeg, double dpi);

} // namespace mirvak
