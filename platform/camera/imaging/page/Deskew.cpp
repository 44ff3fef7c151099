#include "Deskew.h"

#include "Outline.h"
#include "PageShape.h"
#include "SheetFinder.h"
#include "TextSkew.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>
#include <vector>

namespace mirvak {

namespace {

constexpr double leastSkew = 0.04; // degrees; less is not worth resampling the picture
constexpr int leastPage = 16;      // pixels that a margin leaves of the page

void straighten(const cv::Mat& picture, const Outline& outline, int margin, cv::Mat& straight)
{
    const cv::Size2d page = pageSize(outline.corners, picture.size());
    const double room = std::min(page.width, page.height) - leastPage;
    const double trim = std::clamp(static_cast<double>(margin), 0.0, std::max(0.0, room / 2));
    const cv::Size size(std::max(1, cvRound(page.width - 2 * trim)),
                        std::max(1, cvRound(page.height - 2 * trim)));
    // Pixel centres lie at whole numbers, so the outer edges of the result are at -0.5 and size - 0.5.
    const double left = -trim - 0.5, right = left + page.width, bottom = left + page.height;
    const std::array<cv::Point2f, 4> to{cv::Point2d(left, left),
                                        cv::Point2d(right, left),
                                        cv::Point2d(right, bottom),
                                        cv::Point2d(left, bottom)};
    std::array<cv::Point2f, 4> from;
    std::copy(outline.corners.begin(), outline.corners.end(), from.begin());
    const cv::Mat back = cv::getPerspectiveTransform(to.data(), from.data());
    cv::warpPerspective(
        picture, straight, back, size, cv::INTER_LINEAR | cv::WARP_INVERSE_MAP, cv::BORDER_REPLICATE);
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

void turnLevel(Image& image, double skew)
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
}

} // namespace

Deskewed deskew(Image& image, int margin)
{
    if (const std::optional<Outline> outline = findOutline(image.pixels)) {
        straighten(image.pixels, refineOutline(image.pixels, *outline), margin, image.spare);
        std::swap(image.pixels, image.spare);
        return Deskewed::page;
    }
    const std::optional<double> skew = findTextSkew(image.pixels);
    if (!skew || std::abs(*skew) < leastSkew)
        return Deskewed::nothing;
    turnLevel(image, *skew);
    return Deskewed::text;
}

std::vector<Image> deskewAll(const Image& image, int margin)
{
    std::vector<Image> pages;
    for (const Outline& sheet : findSheets(image.pixels)) {
        Image page;
        straighten(image.pixels, refineOutline(image.pixels, sheet), margin, page.pixels);
        page.dpi = image.dpi;
        page.taken = image.taken;
        pages.push_back(std::move(page));
    }
    return pages;
}

bool cutOut(Image& image, const std::array<cv::Point2d, 4>& corners)
{
    const std::vector<cv::Point2f> shape(corners.begin(), corners.end());
    if (!cv::isContourConvex(shape) || cv::contourArea(shape, true) < leastPage * leastPage)
        return false;
    straighten(image.pixels, {corners, 1}, 0, image.spare);
    std::swap(image.pixels, image.spare);
    return true;
}

} // namespace mirvak
