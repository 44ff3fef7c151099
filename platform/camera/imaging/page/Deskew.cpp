#include "Deskew.h"

#include "Outline.h"
#include "PageShape.h"
#include "SheetFinder.h"
#include "Straighten.h"
#include "TextSkew.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

namespace mirvak {

namespace {

constexpr double leastSkew = 0.04; // degrees; less is not worth resampling the picture

/// As straighten, in place.
cv::Matx33d straightenHere(Image& image, const Outline& outline, const PageShape& page, int margin)
{
    Image straight;
    std::swap(straight.pixels, image.spare);
    const cv::Matx33d toOld = straighten(image, outline, page, margin, straight);
    image.spare = std::exchange(image.pixels, straight.pixels);
    image.dpi = straight.dpi;
    return toOld;
}

// The most usual bright colour along the picture's border, where the new ground joins it.
cv::Scalar groundColour(const cv::Mat& rgb)
{
    std::array<int, 3> colour{};
    for (int c = 0; c < 3; ++c) {
        std::array<int, 256> histogram{};
        int count = 0;
        const auto look = [&](int x, int y) {
            ++histogram[rgb.ptr(y)[3 * x + c]];
            ++count;
        };
        for (int x = 0; x < rgb.cols; ++x) {
            look(x, 0);
            look(x, rgb.rows - 1);
        }
        for (int y = 0; y < rgb.rows; ++y) {
            look(0, y);
            look(rgb.cols - 1, y);
        }
        int above = 0, value = 255;
        while (value > 0 && (above += histogram[static_cast<size_t>(value)]) < count / 4)
            --value;
        colour[static_cast<size_t>(c)] = value;
    }
    return cv::Scalar(colour[0], colour[1], colour[2]);
}

cv::Matx33d turnLevel(Image& image, double skew)
{
    const double angle = skew * CV_PI / 180;
    const double width = image.pixels.cols, height = image.pixels.rows;
    const double c = std::cos(angle), s = std::abs(std::sin(angle));
    const cv::Size grown(cvCeil(width * c + height * s), cvCeil(width * s + height * c));
    const cv::Point2f centre(static_cast<float>((width - 1) / 2), static_cast<float>((height - 1) / 2));
    cv::Mat turn = cv::getRotationMatrix2D(centre, skew, 1.0); // counter-clockwise, against the skew
    turn.at<double>(0, 2) += (grown.width - width) / 2;
    turn.at<double>(1, 2) += (grown.height - height) / 2;
    cv::warpAffine(image.pixels,
                   image.spare,
                   turn,
                   grown,
                   cv::INTER_LINEAR,
                   cv::BORDER_CONSTANT,
                   groundColour(image.pixels));
    std::swap(image.pixels, image.spare);
    cv::Mat back;
    cv::invertAffineTransform(turn, back);
    cv::Matx33d toOld = cv::Matx33d::eye();
    cv::Mat(back).copyTo(cv::Mat(toOld, false).rowRange(0, 2));
    return toOld;
}

} // namespace

Deskewed deskew(Image& image, int margin, cv::Matx33d* toOld)
{
    cv::Matx33d unused;
    cv::Matx33d& back = toOld ? *toOld : unused;
    back = cv::Matx33d::eye();
    if (const std::optional<Outline> outline = findOutline(image.pixels)) {
        const Outline refined = refineOutline(image.pixels, *outline);
        back = straightenHere(image, refined, pageShape(refined.corners, image.pixels.size()), margin);
        return Deskewed::page;
    }
    const std::optional<double> skew = findTextSkew(image.pixels);
    if (!skew || std::abs(*skew) < leastSkew)
        return Deskewed::nothing;
    back = turnLevel(image, *skew);
    return Deskewed::text;
}

std::vector<Image> deskewAll(const Image& image, int margin)
{
    std::vector<Outline> sheets = findSheets(image.pixels);
    for (Outline& sheet : sheets)
        sheet = refineOutline(image.pixels, sheet);
    const std::vector<PageShape> shapes = pageShapes(sheets, image.pixels.size());
    std::vector<Image> pages(sheets.size());
    for (size_t i = 0; i < sheets.size(); ++i)
        straighten(image, sheets[i], shapes[i], margin, pages[i]);
    return pages;
}

bool cutOut(Image& image, const std::array<cv::Point2d, 4>& corners)
{
    const std::vector<cv::Point2f> shape(corners.begin(), corners.end());
    if (!cv::isContourConvex(shape) || cv::contourArea(shape, true) < leastPage * leastPage)
        return false;
    straightenHere(image, {corners, 1}, {pageSize(corners, image.pixels.size()), nullptr}, 0);
    return true;
}

} // namespace mirvak
