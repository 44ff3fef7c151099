#pragma once

#include "Codec.h"

namespace mirvak {

bool looksLikeJpeg(const Bytes& bytes);
/// As readImage(); grey, YCbCr, RGB and CMYK files.
std::optional<Image> decodeJpeg(const Bytes& bytes);
/// Turns and mirrors pixels upright that are stored as the Exif orientation (Exif 2.3, tag 0x0112) says.
void applyOrientation(cv::Mat& pixels, int orientation);
/// Turned clockwise without coding it anew. Empty where that is not possible: blocks that are cut off at an
/// edge which would come to lie inside, an Exif orientation, damage.
Bytes turnJpeg(const Bytes& bytes, int quarters);
/// Baseline JPEG, 4:2:2, with the resolution in its JFIF header. Empty above 65500 pixels a side.
Bytes encodeJpeg(const Image& image, int quality);

} // namespace mirvak
