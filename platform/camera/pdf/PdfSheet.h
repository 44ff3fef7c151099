#pragma once

#include "PdfPageSize.h"
#include "PdfPicture.h"

#include <opencv2/core.hpp>

#include <array>

namespace mirvak {

enum class PdfSheetKind {
    ownSize, ///< as large as the picture at its resolution
    lyingA4, ///< with margins, the picture at the top left as large as fits
};

/// A page and where its picture lies on it.
struct PdfSheet
{
    PdfPageSize size;
    cv::Rect2d picture; ///< points from the lower left corner of the sheet

    /// From the unit square of the picture as stored, origin bottom left, to its place, upright: the six
    /// numbers of a matrix (ISO 32000-1, 8.3.3).
    std::array<double, 6> placement(int orientation) const;
    /// From px of the picture as seen, of this size, origin top left, to points of the sheet.
    cv::Matx23d fromPicture(const cv::Size& seen) const;
};

/// Px of the upright picture.
cv::Size seenSize(const PdfPicture& picture);

PdfSheet sheetFor(const PdfPicture& picture, PdfSheetKind kind);

} // namespace mirvak
