#pragma once

#include "Codec.h"

namespace mirvak {

/// A TrueType font whose glyphs have widths and no outlines, for text that is searched and copied but not
/// seen.
namespace invisibleFont {

constexpr double unitsPerEm = 1000;
constexpr double ascent = 780, descent = -220; // of the em: what usual print takes above and below the line

/// Advance widths by glyph. Glyph 0 stands for what is missing and is never shown; the others are as wide as
/// narrow letters, usual ones, wide ones and ideographs.
constexpr int widths[] = {500, 250, 500, 750, 1000};
constexpr int glyphs = sizeof widths / sizeof *widths;

/// The font's file: the tables that a font within a PDF has (ISO 32000-1, 9.9).
Bytes file();

} // namespace invisibleFont

} // namespace mirvak
