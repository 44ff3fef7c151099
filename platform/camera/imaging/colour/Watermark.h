#pragma once

#include "Image.h"

#include <string>

namespace mirvak {

struct TextStyle
{
    int fontSize = 20;   ///< pixels, capital letter and descender together
    unsigned colour = 0; ///< alpha << 24 | red << 16 | green << 8 | blue; alpha 0 is opaque like 255
    double degrees = 0;  ///< clockwise about the anchor
};

/// Writes UTF-8 text with its upper left corner at the anchor (pixels); what lies outside the picture is cut
/// off. Broken UTF-8 shows as the replacement character. @return false when no font is installed.
bool drawText(Image& image, const std::string& text, const cv::Point2d& anchor, const TextStyle& style);

} // namespace mirvak
