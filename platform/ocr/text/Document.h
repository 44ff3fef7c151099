#pragma once

#include "MarkedText.h"

#include <string>
#include <vector>

namespace mirvak {

// Lengths in twips: 1/1440 inch, 1/20 point.

struct TabStop
{
    int position = 0;   ///< from the left margin
    bool right = false; ///< the text before the next tab ends there; otherwise it begins there
};

enum class Alignment { left, centre, right, justified };

struct Paragraph
{
    std::u32string text;      ///< U'\t' goes to the next tab stop
    std::vector<Span> unsure; ///< of the text: words that the recogniser was not sure of, from the begin
    Alignment alignment = Alignment::left;
    int halfPoints = 22;  ///< size of the letters
    int headingLevel = 0; ///< 1 and 2 for headings
    int leftIndent = 0;
    int firstIndent = 0; ///< of the first line, on top of leftIndent; may be negative
    int spaceBefore = 0;
    std::vector<TabStop> tabs;
};

/// A text as a word processor sees it.
struct Document
{
    int paperWidth = 11906, paperHeight = 16838; ///< A4
    int marginLeft = 1440, marginTop = 1440, marginRight = 1440, marginBottom = 1440;
    std::string language; ///< as the recogniser's models are named
    std::vector<Paragraph> paragraphs;
};

} // namespace mirvak
