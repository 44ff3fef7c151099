#pragma once

namespace mirvak {

/// The sheet of one page, in points of 1/72 inch times `unit`.
struct PdfPageSize
{
    double width = 0;
    double height = 0;
    double unit =
        1; ///< above 1 when the page is longer than 200 inches, the limit of the format's plain unit
};

/// The sheet for an upright picture: its size at its resolution, or the paper (A3 to A6, B5, Letter, Legal,
/// an identity card, either way round) that both sides match within 2 %. Never below 3 points a side, the
/// least that the format allows.
/// @param width, height       px
/// @param dpiAcross, dpiDown  dots per inch along and across the upright rows
PdfPageSize pdfPageSize(int width, int height, double dpiAcross, double dpiDown);

} // namespace mirvak
