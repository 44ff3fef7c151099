#include "BookFlat.h"

#include "BookGeometry.h"
#include "Deskew.h"
#include "Fingers.h"
#include "Outline.h"
#include "PaperModel.h"

#include <algorithm>
#include <array>

namespace mirvak {

namespace {

constexpr double paperLevel = 248; // of the brightest colour of good paper
constexpr int leastSide = 64;      // pixels: less is no page that anybody could read

double brightestOf(const cv::Scalar& colour)
{
    return std::max({1.0, colour[0], colour[1], colour[2]});
}

// Paper gets everywhere the tint that it has at large, and the brightness of paper in good light.
void evenLight(cv::Mat& rgb)
{
    const PaperModel model(rgb);
    Flattening light;
    light.whiteFrom = 1;
    light.noiseMargin = 1;
    flatten(rgb, model, light);
    const cv::Scalar paper = cv::mean(model.paper());
    cv::Mat tints(1, 256, CV_8UC3);
    for (int level = 0; level < 256; ++level) {
        for (int c = 0; c < 3; ++c)
            tints.at<cv::Vec3b>(level)[c] =
                cv::saturate_cast<unsigned char>(level * (paperLevel / 255) * paper[c] / brightestOf(paper));
    }
    cv::LUT(rgb, tints, rgb);
}

// A picture to the ends of its page has no paper to go by: it gets the light of the page beside it.
void brighten(cv::Mat& rgb, const cv::Mat& beside)
{
    rgb *= paperLevel / brightestOf(cv::mean(PaperModel(beside).paper()));
}

Image pageOf(cv::Mat pixels, const Image& from)
{
    Image page;
    page.pixels = std::move(pixels);
    page.dpi = from.dpi;
    page.taken = from.taken;
    return page;
}

Image finished(cv::Mat pixels, const Image& from, bool takeFingers, const OpenEnds& ends)
{
    if (takeFingers)
        removeFingers(pixels, ends);
    evenLight(pixels);
    return pageOf(std::move(pixels), from);
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

BookPages partedBook(const BookGeometry& book, const Image& image, bool takeFingers)
{
    const std::array<OpenEnds, 2> ends{OpenEnds{true, true, false, true}, {false, true, true, true}};
    std::array<cv::Mat, 2> seen;
    for (const bool isRight : {false, true})
        seen[isRight] = book.picture(image.pixels, book.area(isRight));
    for (const bool isRight : {false, true}) {
        if (book.isPicture(isRight))
            brighten(seen[isRight], seen[!isRight]);
    }
    std::array<Image, 2> pages;
    for (const bool isRight : {false, true}) {
        pages[isRight] = book.isPicture(isRight)
                             ? pageOf(std::move(seen[isRight]), image)
                             : finished(std::move(seen[isRight]), image, takeFingers, ends[isRight]);
    }
    return {std::move(pages[0]), std::move(pages[1])};
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
    const bool isSpread = hasLeft && hasRight;
    if (isSpread && parted)
        return partedBook(book, image, takeFingers);
    const cv::Rect2d area = isSpread ? book.area(false) | book.area(true) : book.area(hasRight);
    return BookPages{finished(book.picture(image.pixels, area), image, takeFingers, {}), std::nullopt};
}

} // namespace mirvak
