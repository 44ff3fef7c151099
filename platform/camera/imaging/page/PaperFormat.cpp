#include "PaperFormat.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace mirvak {

namespace {

constexpr double tolerance = 0.02;
constexpr double usualView = 385;     // mm along the longer side of the picture
constexpr double worstDistance = 1.1; // sizes apart by more than three times are not the same thing

constexpr PaperFormat formats[] = {{210, 297, false, 0},       // A4
                                   {215.9, 279.4, false, 0},   // Letter
                                   {53.98, 85.6, true, 0},     // ID-1 of ISO/IEC 7810
                                   {148, 210, false, 0.2},     // A5
                                   {105, 148, false, 0.25},    // A6
                                   {215.9, 355.6, false, 0.3}, // Legal
                                   {297, 420, false, 0.35},    // A3, which few cameras have in view
                                   {182, 257, false, 0.4},     // B5 of JIS P 0138, also the Chinese 16 K
                                   {176, 250, false, 0.5}};    // B5 of ISO 216

} // namespace

const PaperFormat* formatOfSize(double width, double height)
{
    const auto [shorter, longer] = std::minmax(width, height);
    const auto difference = [shorter = shorter, longer = longer](const PaperFormat& format) {
        return std::max(std::abs(shorter / format.shortSide - 1), std::abs(longer / format.longSide - 1));
    };
    const PaperFormat* nearest = std::min_element(
        std::begin(formats), std::end(formats), [&](const PaperFormat& a, const PaperFormat& b) {
            return difference(a) < difference(b);
        });
    return difference(*nearest) <= tolerance ? nearest : nullptr;
}

const PaperFormat* formatOfShape(const cv::Size2d& sheet, const cv::Size& picture)
{
    const auto [shorter, longer] = std::minmax(sheet.width, sheet.height);
    const double longSide = longer / std::max(picture.width, picture.height) * usualView;
    const PaperFormat* best = nullptr;
    double least = worstDistance;
    for (const PaperFormat& format : formats) {
        const double distance = std::abs(std::log(longSide / format.longSide)) + format.rarity;
        const double stretch = longer / shorter * format.shortSide / format.longSide;
        if (std::abs(stretch - 1) <= tolerance && distance < least) {
            best = &format;
            least = distance;
        }
    }
    return best;
}

} // namespace mirvak
