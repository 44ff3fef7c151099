#pragma once

#include "PdfText.h"

#include <vector>

namespace mirvak {

/// The place of a word on the page, in points.
struct PdfRun
{
    cv::Point2d start;  ///< the lower corner where the word begins
    cv::Point2d along;  ///< its lower edge
    cv::Point2d upward; ///< its left edge
};

/// One for each word. Where no space follows, a word reaches to the next one: a gap would be taken for a
/// space. Words that lie almost level are made level, and so are lines as far as their words stay where they
/// are to the eye: many readers put letters together by their levels and take a slanting line apart.
std::vector<PdfRun> runsOf(const PdfWords& words, const cv::Matx23d& toSheet);

} // namespace mirvak
