#pragma once

#include "Codec.h"

#include <jpeglib.h>

/// Picture files of kinds that our own encoders do not make.
namespace odd {

struct JpegKind
{
    J_COLOR_SPACE pixels = JCS_RGB; ///< of the matrix handed over; its channels fit
    J_COLOR_SPACE stored = JCS_YCbCr;
    bool progressive = false;
    bool arithmetic = false;
    bool jfif = true;  ///< where the colour space allows it
    bool adobe = true; ///< the same
    int dpiAcross = 72;
    int dpiDown = 72;
};
mirvak::Bytes jpeg(const cv::Mat& pixels, const JpegKind& kind);

struct PngKind
{
    int colourType; ///< as in the file
    int bits;
    bool interlaced = false;
};
/// `pixels` is RGB: red stands for grey, for the palette index (whose colour is its own value in red, green
/// and blue, 255 minus it) and, in the kinds with opacity, red 0 is transparent and everything else opaque.
mirvak::Bytes png(const cv::Mat& pixels, const PngKind& kind);

} // namespace odd
