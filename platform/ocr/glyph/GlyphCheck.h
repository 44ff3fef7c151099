#pragma once

#include "GlyphBook.h"
#include "ReadPage.h"

#include <functional>

namespace mirvak {

/// Looks at the ideographs that the recogniser was not sure of one by one: each is cut out of its line and
/// compared with what the book knows of the characters. What looks like another one for sure is put right,
/// what looks like itself is believed. The recogniser reads lines and has seen some characters too seldom;
/// the book sees shapes only, and seldom errs in the same way. Nothing is touched where the cuts may lie
/// beside the characters: most of the ideographs about a doubtful one have to look like what they were read
/// as. What the recogniser saw twice, or where no character is, goes. Reentrant.
/// @param grey the page's picture (8-bit, dark on white), on which the words have their places
/// @param isOver asked before each line; the lines that are left then stay as they are
void checkGlyphs(ReadPage& page,
                 const cv::Mat& grey,
                 const GlyphBook& book,
                 const std::function<bool()>& isOver);

} // namespace mirvak
