#pragma once

#include "Codec.h"

#include <optional>

namespace mirvak {

/// How a picture's file becomes an image of a PDF. A JPEG's bytes go in as they are, a PNG's compressed rows
/// too; what PDF has no form for is decoded and compressed without loss: BMP, interlaced PNG, pictures with
/// transparent parts (laid on white) and JPEG coded arithmetically. Those have 8 bits a channel.
struct PdfPicture
{
    enum class Coding {
        jpeg,   ///< the stream is the file
        rows,   ///< zlib stream of PNG-filtered rows, out of the file
        remade, ///< the same, made of the decoded pixels
    };
    Coding coding = Coding::jpeg;
    int width = 0;           ///< px as stored
    int height = 0;          ///< px as stored
    int bits = 8;            ///< of a sample
    int samples = 3;         ///< of a pixel: 1 grey or palette index, 3 RGB, 4 CMYK
    Bytes palette;           ///< red, green, blue of each index; empty when there is none
    bool isInverted = false; ///< CMYK with 0 for full ink
    bool isPlainRgb = false; ///< a JPEG whose components are red, green, blue
    int orientation = 1;     ///< Exif: how the stored picture is turned upright
    double dpi = 0;          ///< along the stored rows
    double dpiDown = 0;

    /// Recognises the file by its first bytes. @return nothing when it is no JPEG, PNG or BMP, broken, cut
    /// short or larger than maxPixels
    static std::optional<PdfPicture> examine(const Bytes& file);

    /// The same picture without inks: one of four components is decoded and becomes one of three. Throws
    /// std::runtime_error when it does not decode.
    PdfPicture inRgb(const Bytes& file) const;

    /// The image stream's bytes, from the file's. Throws std::runtime_error when the picture does not decode.
    Bytes stream(Bytes file) const;
};

} // namespace mirvak
