#include "PdfSheet.h"

#include <algorithm>
#include <array>
#include <utility>

namespace mirvak {

namespace {

// Points. The same sheet as the toolkit's writer makes of it.
constexpr double lyingWidth = 842, lyingHeight = 595, margin = 30;

bool isLying(const PdfPicture& picture)
{
    return picture.orientation >= 5;
}

PdfSheet lyingA4(const cv::Size& seen)
{
    constexpr double width = lyingWidth - 2 * margin, height = lyingHeight - 2 * margin;
    const double scale = std::min(width / seen.width, height / seen.height);
    PdfSheet sheet;
    sheet.size = {lyingWidth, lyingHeight, 1};
    sheet.picture = {
        margin, lyingHeight - margin - seen.height * scale, seen.width * scale, seen.height * scale};
    return sheet;
}

} // namespace

std::array<double, 6> PdfSheet::placement(int orientation) const
{
    const double width = picture.width, height = picture.height, left = picture.x, bottom = picture.y;
    const double right = left + width, top = bottom + height;
    switch (orientation) {
    case 2:
        return {-width, 0, 0, height, right, bottom};
    case 3:
        return {-width, 0, 0, -height, right, top};
    case 4:
        return {width, 0, 0, -height, left, top};
    case 5:
        return {0, -height, -width, 0, right, top};
    case 6:
        return {0, -height, width, 0, left, top};
    case 7:
        return {0, height, width, 0, left, bottom};
    case 8:
        return {0, height, -width, 0, right, bottom};
    default:
        return {width, 0, 0, height, left, bottom};
    }
}

cv::Matx23d PdfSheet::fromPicture(const cv::Size& seen) const
{
    const double across = picture.width / seen.width, down = picture.height / seen.height;
    return {across, 0, picture.x, 0, -down, picture.y + picture.height};
}

cv::Size seenSize(const PdfPicture& picture)
{
    return isLying(picture) ? cv::Size(picture.height, picture.width)
                            : cv::Size(picture.width, picture.height);
}

PdfSheet sheetFor(const PdfPicture& picture, PdfSheetKind kind)
{
    const cv::Size seen = seenSize(picture);
    if (kind == PdfSheetKind::lyingA4)
        return lyingA4(seen);
    double dpi = picture.dpi, dpiDown = picture.dpiDown;
    if (isLying(picture))
        std::swap(dpi, dpiDown);
    PdfSheet sheet;
    sheet.size = pdfPageSize(seen.width, seen.height, dpi, dpiDown);
    sheet.picture = {0, 0, sheet.size.width, sheet.size.height};
    return sheet;
}

} // namespace mirvak
