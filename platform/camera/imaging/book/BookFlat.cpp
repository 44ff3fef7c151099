#include "BookFlat.h"

#include "BookGeometry.h"
#include "Deskew.h"
#include "Fingers.h"
#include "Outline.h"
#include "PaperModel.h"

#include <algorithm>

namespace mirvak {

namespace {

constexpr double paperLevel = 248; // of the brightest colour of good paper
constexpr int leastSide = 64;      // pixels: less is no page that anybody could read

// Paper gets everywhere the tint that it has at large, and the brightness of paper in good light.
void evenLight(cv::Mat& rgb)
{
    const PaperModel model(rgb);
    Flattening light;
    light.whiteFrom = 1;
    light.noiseMargin = 1;
    flatten(rgb, model, light);
    const cv::Scalar paper = cv::mean(model.paper());
    const double brightest = std::max({1.0, paper[0], paper[1], paper[2]});
    cv::Mat tints(1, 256, CV_8UC3);
    for (int level = 0; level < 256; ++level) {
        for (int c = 0; c < 3; ++c)
            tints.at<cv::Vec3b>(level)[c] =
                cv::saturate_cast<unsigned char>(level * (paperLevel / 255) * paper[c] / brightest);
    }
    cv::LUT(rgb, tints, rgb);
}

Image finished(cv::Mat pixels, const Image& from, bool takeFingers, const OpenEnds& ends)
{
    Image page;
    page.pixels = std::move(pixels);
    page.dpi = from.dpi;
    page.taken = from.taken;
    if (takeFingers)
        removeFingers(page.pixels, ends);
    evenLight(page.pixels);
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
    if (!hasLeft && !hasRight && !book.hasPrint() && !findOutline(image.pixels))
        return {};
    if ((!hasLeft && !hasRight) || book.isFlat() || !book.holds())
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
