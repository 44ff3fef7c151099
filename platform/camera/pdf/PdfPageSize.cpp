#include "PdfPageSize.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace mirvak {

namespace {

constexpr double pointsPerInch = 72;
constexpr double pointsPerMm = pointsPerInch / 25.4;
constexpr double tolerance = 0.02;
constexpr double shortest = 3;    // points; ISO 32000-1, table C.1
constexpr double longest = 14400; // points; the same

struct Paper
{
    double shortSide, longSide; // points
};

constexpr Paper inMm(double shortSide, double longSide)
{
    return {shortSide * pointsPerMm, longSide * pointsPerMm};
}

constexpr Paper papers[] = {inMm(297, 420),     // A3
                            inMm(210, 297),     // A4
                            inMm(148, 210),     // A5
                            inMm(105, 148),     // A6
                            inMm(176, 250),     // B5 of ISO 216
                            inMm(182, 257),     // B5 of JIS P 0138, also the Chinese trade's 16 K
                            {612, 792},         // Letter
                            {612, 1008},        // Legal
                            inMm(53.98, 85.6)}; // ID-1 of ISO/IEC 7810

/// How far the two sizes are apart, by the worse side.
double difference(double width, double height, const Paper& paper)
{
    return std::max(std::abs(width / paper.shortSide - 1), std::abs(height / paper.longSide - 1));
}

} // namespace

PdfPageSize pdfPageSize(int width, int height, double dpiAcross, double dpiDown)
{
    double across = width / dpiAcross * pointsPerInch;
    double down = height / dpiDown * pointsPerInch;
    const double shorter = std::min(across, down);
    const double longer = std::max(across, down);
    const Paper* nearest =
        std::min_element(std::begin(papers), std::end(papers), [&](const Paper& a, const Paper& b) {
            return difference(shorter, longer, a) < difference(shorter, longer, b);
        });
    if (difference(shorter, longer, *nearest) <= tolerance) {
        across = across <= down ? nearest->shortSide : nearest->longSide;
        down = nearest->shortSide + nearest->longSide - across;
    }
    PdfPageSize page;
    page.unit = std::max(1.0, std::ceil(std::max(across, down) / longest));
    page.width = std::max(shortest, across / page.unit);
    page.height = std::max(shortest, down / page.unit);
    return page;
}

} // namespace mirvak
