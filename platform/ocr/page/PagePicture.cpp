#include "PagePicture.h"

#include "Codec.h"
#include "Outline.h"
#include "PageMap.h"
#include "PaperModel.h"
#include "Rotate.h"
#include "Seals.h"
#include "Straighten.h"
#include "TextSkew.h"

#include <opencv2/imgproc.hpp>

#include <cmath>
#include <vector>

namespace mirvak {

namespace {

constexpr double leastSkew = 0.15;      // degrees; the reader copes with less
constexpr double groundDarkness = 0.85; // of the paper's level: what is darker around it is no paper
constexpr double leastShare = 0.12;     // of the picture: what is smaller may be a part of the page
constexpr int edgeMargin = 6;           // px inside the page's edges, which throw a shadow
constexpr int smallestPage = 32;        // px

// Less is made white than for the eye: faded strokes stay, and the reader does not mind a little grain.
const Flattening forReading{0.98, 1.0, Flattening::straightCurve()};

constexpr double strongNoise = 8;    // levels
constexpr double softness = 0.08;    // px (standard deviation) for each level of noise
constexpr double mostSoftness = 1.2; // px

double meanWithin(const cv::Mat& grey, const std::vector<cv::Point>& shape, const cv::Mat& besides)
{
    cv::Mat mask(grey.size(), CV_8UC1, cv::Scalar(0));
    cv::fillConvexPoly(mask, shape, 255);
    if (!besides.empty())
        mask = besides & ~mask;
    return cv::mean(grey, mask)[0];
}

// A frame printed on the page has the same paper on both sides; a page lies on something else. White paper on
// a white table stays whole, which costs nothing but time.
bool liesOnDarkGround(const cv::Mat& rgb, const Outline& outline)
{
    const std::vector<cv::Point2f> corners(outline.corners.begin(), outline.corners.end());
    if (cv::contourArea(corners) < leastShare * rgb.cols * rgb.rows)
        return false;
    const double factor = 400.0 / std::max(rgb.cols, rgb.rows);
    cv::Mat small;
    cv::resize(rgb, small, {}, factor, factor, cv::INTER_AREA);
    cv::cvtColor(small, small, cv::COLOR_RGB2GRAY);
    std::vector<cv::Point> page;
    for (const cv::Point2d& corner : outline.corners)
        page.emplace_back(cvRound(corner.x * factor), cvRound(corner.y * factor));
    const cv::Mat all(small.size(), CV_8UC1, cv::Scalar(255));
    return meanWithin(small, page, all) < groundDarkness * meanWithin(small, page, cv::Mat());
}

cv::Matx33d cutOutPage(Image& image, const Outline& found)
{
    const Outline outline = refineOutline(image.pixels, found);
    Image page;
    const PageShape shape = pageShape(outline.corners, image.pixels.size());
    const cv::Matx33d toOld = straighten(image, outline, shape, edgeMargin, page);
    image = std::move(page);
    return pageMap::fromCentres(toOld);
}

/// @return the way back, as PagePicture::toPicture
cv::Matx33d setLevel(Image& image)
{
    const std::optional<Outline> outline = findOutline(image.pixels);
    if (outline && liesOnDarkGround(image.pixels, *outline))
        return cutOutPage(image, *outline);
    const std::optional<double> skew = findTextSkew(image.pixels);
    if (!skew || std::abs(*skew) < leastSkew)
        return cv::Matx33d::eye();
    const cv::Size before = image.pixels.size();
    rotate(image, -*skew);
    return pageMap::turnedBack(-*skew, before, image.pixels.size());
}

// Strong noise would break thin strokes when the paper is made white: it is softened first, as far as the
// strokes can bear.
void evenOut(cv::Mat& rgb)
{
    std::optional<PaperModel> model(rgb);
    if (model->noise() > strongNoise) {
        cv::GaussianBlur(rgb, rgb, {}, std::min(mostSoftness, softness * model->noise()));
        model.emplace(rgb);
    }
    flatten(rgb, *model, forReading);
}

} // namespace

std::optional<PagePicture> openPage(const std::string& path)
{
    std::optional<Image> image = readImage(path);
    if (!image)
        return std::nullopt;
    PagePicture page;
    page.dpi = image->dpi;
    page.picture = image->pixels.size();
    if (std::min(image->pixels.cols, image->pixels.rows) >= smallestPage) {
        page.toPicture = setLevel(*image);
        evenOut(image->pixels);
        takeOutSeals(image->pixels);
    }
    cv::cvtColor(image->pixels, page.grey, cv::COLOR_RGB2GRAY);
    return page;
}

void turnPage(PagePicture& page, int quarterTurns)
{
    const int turns = ((quarterTurns % 4) + 4) % 4;
    if (turns == 0)
        return;
    cv::Mat turned; // never in place: the pixels may be shared
    cv::rotate(page.grey, turned, turns - 1);
    page.toPicture =
        page.toPicture * pageMap::turnedBack(90.0 * quarterTurns, page.grey.size(), turned.size());
    page.grey = turned;
}

void scalePage(PagePicture& page, double factor)
{
    cv::Mat scaled;
    cv::resize(page.grey, scaled, {}, factor, factor, factor < 1 ? cv::INTER_AREA : cv::INTER_CUBIC);
    page.toPicture = page.toPicture * pageMap::scaledBack(page.grey.size(), scaled.size());
    page.grey = scaled;
    page.dpi *= factor;
}

} // namespace mirvak
