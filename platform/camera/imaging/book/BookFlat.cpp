#include "BookFlat.h"

#include "BookGeometry.h"
#include "Deskew.h"
#include "Fingers.h"
#include "PaperModel.h"

#include <algorithm>

namespace mirvak {

namespace {

constexpr int leastSide = 64; // pixels: less is no page that anybody could read

Image finished(cv::Mat pixels, const Image& from, bool takeFingers, const OpenEnds& ends)
{
    Image page;
    page.pixels = std::move(pixels);
    page.dpi = from.dpi;
    page.taken = from.taken;
    if (takeFingers)
        removeFingers(page.pixels, ends);
    Flattening light;
    light.whiteFrom = 1;
    light.noiseMargin = 1;
    flatten(page.pixels, PaperModel(page.pixels), light);
    return page;
}

// Where no bend is told.
BookPages straightened(const Image& image, bool takeFingers)
{
    Image copy;
    copy.pixels = image.pixels;
    copy.dpi = image.dpi;
    deskew(copy, 0);
    BookPages pages;
    pages.left = finished(
        copy.pixels.data == image.pixels.data ? image.pixels.clone() : copy.pixels, image, takeFingers, {});
    return pages;
}

} // namespace

std::optional<BookPages> flattenBook(const Image& image, bool takeFingers, bool parted)
{
    if (std::min(image.pixels.cols, image.pixels.rows) < leastSide)
        return {};
    const BookGeometry book(image.pixels);
    const bool hasLeft = book.hasPage(false), hasRight = book.hasPage(true);
    if (!hasLeft && !hasRight)
        return {};
    if (!book.holds())
        return straightened(image, takeFingers);
    const auto page = [&](const cv::Rect2d& area, const OpenEnds& ends) {
        return finished(book.picture(image.pixels, area), image, takeFingers, ends);
    };
    BookPages pages;
    const bool isSpread = hasLeft && hasRight;
    if (isSpread && parted) {
        pages.left = page(book.area(false), {true, true, false, true});
        pages.right = page(book.area(true), {false, true, true, true});
    } else {
        pages.left = page(isSpread ? book.area(false) | book.area(true) : book.area(hasRight), {});
    }
    return pages;
}

} // namespace mirvak
