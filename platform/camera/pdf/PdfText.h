#pragma once

#include <opencv2/core.hpp>

#include <array>
#include <string>
#include <vector>

namespace mirvak {

/// A word that lies invisibly over the picture of a page.
struct PdfWord
{
    std::string text; ///< UTF-8
    /// Clockwise from where the upper edge begins, in reading direction; px of the picture as seen, from its
    /// outer corner at the top left.
    std::array<cv::Point2d, 4> corners;
    int line = 0;               ///< words of one line have the same number
    bool isSpaceBehind = false; ///< between it and the next word of its line
};

using PdfWords = std::vector<PdfWord>;

class PdfGlyphs;

/// The operators that show the words in text rendering mode 3, neither filled nor stroked (ISO 32000-1,
/// 9.3.6), with the font "/Text". Each word gets a matrix of its own, so that its letters fill its box.
/// @param glyphs   gets the letters that are new to it
/// @param toSheet  from px of the picture as seen to points of the page: x and y by the first two columns
std::string invisibleText(const PdfWords& words, PdfGlyphs& glyphs, const cv::Matx23d& toSheet);

} // namespace mirvak
