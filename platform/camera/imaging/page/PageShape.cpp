#include "PageShape.h"

#include <algorithm>
#include <cmath>

namespace mirvak {

namespace {

// Focal length in units of the picture's longer side: about 55 degrees of view, and the limits of the lenses
// that are built into such cameras and telephones.
constexpr double usualFocal = 0.95, shortestFocal = 0.55, longestFocal = 3.0;

/// The page of these proportions of which no side is shorter than it was seen.
cv::Size2d sizeOf(const std::array<cv::Point2d, 4>& corners, double aspect)
{
    const auto side = [&](size_t a, size_t b) { return cv::norm(corners[a] - corners[b]); };
    const double width = std::max(side(0, 1), side(3, 2)), height = std::max(side(0, 3), side(1, 2));
    return width >= height * aspect ? cv::Size2d(width, width / aspect) : cv::Size2d(height * aspect, height);
}

} // namespace

double pageAspect(const std::array<cv::Point2d, 4>& corners, const cv::Size& picture)
{
    const cv::Point2d middle(0.5 * (picture.width - 1), 0.5 * (picture.height - 1));
    const double unit = std::max(picture.width, picture.height);
    // The paper's names: m1 top left, m2 top right, m3 bottom left, m4 bottom right.
    const auto scaled = [&](size_t i) {
        const cv::Point2d p = (corners[i] - middle) / unit;
        return cv::Vec3d(p.x, p.y, 1);
    };
    const cv::Vec3d m1 = scaled(0), m2 = scaled(1), m3 = scaled(3), m4 = scaled(2);
    const double k2 = m1.cross(m4).dot(m3) / m2.cross(m4).dot(m3);
    const double k3 = m1.cross(m4).dot(m2) / m3.cross(m4).dot(m2);
    const cv::Vec3d n2 = k2 * m2 - m1, n3 = k3 * m3 - m1;
    double focal = usualFocal;
    const double depth = n2[2] * n3[2];
    if (std::abs(depth) > 1e-3) {
        const double squared = -(n2[0] * n3[0] + n2[1] * n3[1]) / depth;
        if (squared > shortestFocal * shortestFocal && squared < longestFocal * longestFocal)
            focal = std::sqrt(squared);
    }
    const auto length = [&](const cv::Vec3d& n) { return std::hypot(std::hypot(n[0], n[1]) / focal, n[2]); };
    const double aspect = length(n2) / length(n3);
    // Corners that no rectangle can have end here as nonsense.
    return std::isfinite(aspect) ? std::clamp(aspect, 0.02, 50.0) : 1.0;
}

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
