#include "Geometry.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cstdint>

namespace mirvak {

namespace {

// In 64 bits: left + width may lie beyond the range of int.
cv::Rect
clipped(const cv::Size& size, std::int64_t left, std::int64_t top, std::int64_t width, std::int64_t height)
{
    const std::int64_t x0 = std::max<std::int64_t>(left, 0), y0 = std::max<std::int64_t>(top, 0);
    const std::int64_t x1 = std::min<std::int64_t>(left + width, size.width);
    const std::int64_t y1 = std::min<std::int64_t>(top + height, size.height);
    if (x1 <= x0 || y1 <= y0)
        return {};
    return {static_cast<int>(x0), static_cast<int>(y0), static_cast<int>(x1 - x0), static_cast<int>(y1 - y0)};
}

bool possible(std::int64_t width, std::int64_t height)
{
    return width > 0 && height > 0 && width <= maxPixels / height;
}

} // namespace

bool crop(Image& image, int left, int top, int width, int height)
{
    const cv::Rect part = clipped(image.pixels.size(), left, top, width, height);
    if (part.empty())
        return false;
    if (part.size() == image.pixels.size())
        return true;
    image.pixels(part).copyTo(image.spare);
    std::swap(image.pixels, image.spare);
    return true;
}

bool resize(Image& image, int width, int height, Scaling scaling)
{
    if (!possible(width, height))
        return false;
    const int method = scaling == Scaling::nearest    ? cv::INTER_NEAREST
                       : scaling == Scaling::bilinear ? cv::INTER_LINEAR
                       : scaling == Scaling::area     ? cv::INTER_AREA
                                                      : cv::INTER_CUBIC;
    const double before = image.pixels.cols;
    cv::resize(image.pixels, image.spare, {width, height}, 0, 0, method);
    std::swap(image.pixels, image.spare);
    image.dpi *= width / before; // the paper stays as large as it was
    return true;
}

bool merge(const Image& base, const Image& inset, const cv::Rect& place, Image& merged)
{
    if (!possible(place.width, place.height))
        return false;
    base.pixels.copyTo(merged.pixels);
    merged.dpi = base.dpi;
    const cv::Rect seen = clipped(base.pixels.size(), place.x, place.y, place.width, place.height);
    if (seen.empty())
        return true;
    cv::Mat scaled;
    const bool reducing = place.width < inset.pixels.cols && place.height < inset.pixels.rows;
    cv::resize(inset.pixels, scaled, place.size(), 0, 0, reducing ? cv::INTER_AREA : cv::INTER_LINEAR);
    scaled(seen - place.tl()).copyTo(merged.pixels(seen));
    return true;
}

} // namespace mirvak
