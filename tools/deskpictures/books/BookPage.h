#pragma once

#include "pages/Pages.h"

#include <opencv2/core.hpp>

#include <vector>

namespace deskpictures {

enum class PageContent {
    English,
    Russian,
    Chinese,
    TwoColumns,
    Headings,
    WithPicture,
    Table,
    FewLines,
    Empty,
    Photograph,
    VerticalChinese
};
constexpr int pageContents = 11;
const char* nameOf(PageContent content);

/// One page of a book and what stands on it.
struct BookPage
{
    FlatPage flat;
    PageContent content = PageContent::Empty;
    std::vector<TextRow> rows; ///< in reading order; empty also where the text runs downwards
    const char* model =
        ""; ///< that Tesseract needs; empty: not to be read, because little or no running text
};

/// A page whose words, type, margins and paper depend on the random numbers. Reentrant.
/// @param isLeft  the spine is at its right edge
BookPage drawBookPage(PageContent content, cv::Size2d pageMm, bool isLeft, cv::RNG& random);

} // namespace deskpictures
