#include "PdfPageSize.h"

#include "PaperFormat.h"

#include <algorithm>
#include <cmath>
#include <tuple>

namespace mirvak {

namespace {

constexpr double pointsPerInch = 72;
constexpr double pointsPerMm = pointsPerInch / 25.4;
constexpr double shortest = 3;    // points; ISO 32000-1, table C.1
constexpr double longest = 14400; // points; the same

} // namespace

PdfPageSize pdfPageSize(int width, int height, double dpiAcross, double dpiDown)
{
    double across = width / dpiAcross * pointsPerInch;
    double down = height / dpiDown * pointsPerInch;
    if (const PaperFormat* paper = formatOfSize(across / pointsPerMm, down / pointsPerMm)) {
        const double shortSide = paper->shortSide * pointsPerMm, longSide = paper->longSide * pointsPerMm;
        std::tie(across, down) =
            across <= down ? std::pair(shortSide, longSide) : std::pair(longSide, shortSide);
    }
    PdfPageSize page;
    page.unit = std::max(1.0, std::ceil(std::max(across, down) / longest));
    page.width = std::max(shortest, across / page.unit);
    page.height = std::max(shortest, down / page.unit);
    return page;
}

} // namespace mirvak
