#include "PageShape.h"

#include <algorithm>
#include <cmath>

namespace mirvak {

namespace {

/// The page of these proportions of which no side is shorter than it was seen.
cv::Size2d sizeOf(const std::array<cv::Point2d, 4>& corners, double aspect)
{
    const auto side = [&](size_t a, size_t b) { return cv::norm(corners[a] - corners[b]); };
    const double width = std::max(side(0, 1), side(3, 2)), height = std::max(side(0, 3), side(1, 2));
    return width >= height * aspect ? cv::Size2d(width, width / aspect) : cv::Size2d(height * aspect, height);
}

} // namespace

cv::Size2d pageSize(const std::array<cv::Point2d, 4>& corners, const cv::Size& picture)
{
    return sizeOf(corners, pageAspect(corners, picture));
}

PageShape pageShape(const std::array<cv::Point2d, 4>& corners, const cv::Size& picture)
{
    PageShape shape{pageSize(corners, picture)};
    shape.format = formatOfShape(shape.size, picture);
    if (shape.format) {
        const double upright = shape.format->shortSide / shape.format->longSide;
        shape.size = sizeOf(corners, shape.size.width <= shape.size.height ? upright : 1 / upright);
    }
    return shape;
}

double PageShape::dpi() const
{
    constexpr double mmPerInch = 25.4;
    return std::max(size.width, size.height) / format->longSide * mmPerInch;
}

std::vector<PageShape> pageShapes(const std::vector<Outline>& sheets, const cv::Size& picture)
{
    constexpr double sameScale = 1.15; // perspective makes what lies farther away smaller
    std::vector<PageShape> pages;
    const PageShape* largest = nullptr;
    pages.reserve(sheets.size());
    for (const Outline& sheet : sheets) {
        pages.push_back(pageShape(sheet.corners, picture));
        const PageShape& page = pages.back();
        if (page.format && (!largest || page.size.area() > largest->size.area()))
            largest = &page;
    }
    const double dpi = largest ? largest->dpi() : 0;
    for (size_t i = 0; i < pages.size(); ++i) {
        if (pages[i].format && std::abs(std::log(pages[i].dpi() / dpi)) > std::log(sameScale))
            pages[i] = {pageSize(sheets[i].corners, picture), nullptr};
    }
    return pages;
}

} // namespace mirvak
