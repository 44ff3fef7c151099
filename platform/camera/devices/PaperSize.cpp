#include "PaperSize.h"

#include "Outline.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>

namespace mirvak {
namespace {

// Between "too large for A4" and "small enough for A4" lies a gap, so that one page cannot swing to and fro.
constexpr double gap = 0.95;

double areaShare(const Outline& page, const cv::Size& picture)
{
    std::vector<cv::Point2f> corners(page.corners.begin(), page.corners.end());
    return cv::contourArea(corners) / (static_cast<double>(picture.width) * picture.height);
}

/// Whether every corner lies in the centred part of the picture with `share` of its width and height.
bool liesWithin(const Outline& page, const cv::Size& picture, double share)
{
    return std::all_of(page.corners.begin(), page.corners.end(), [&](const cv::Point2d& corner) {
        return std::abs(corner.x - picture.width / 2.0) <= picture.width * share / 2 &&
               std::abs(corner.y - picture.height / 2.0) <= picture.height * share / 2;
    });
}

/// Whether the picture's border cuts a side of the page off.
bool reachesBeyond(const Outline& page, const cv::Size& picture)
{
    const double tolerance = std::max(picture.width, picture.height) / 200.0; // outlines are good to less
    for (size_t i = 0; i < page.corners.size(); ++i) {
        if (liesOnBorder(page.corners[i], page.corners[(i + 1) % page.corners.size()], picture, tolerance))
            return true;
    }
    return false;
}

/// A sheet that covers the picture shows no outline: it is bright on all sides.
bool isAllPaper(const cv::Mat& rgb)
{
    constexpr int side = 64;
    constexpr double paperBrightness = 150;
    cv::Mat small;
    cv::resize(rgb, small, {side, side}, 0, 0, cv::INTER_AREA);
    cv::cvtColor(small, small, cv::COLOR_RGB2GRAY);
    constexpr double rimQuantile = 0.1; // print may reach the rim here and there
    cv::Mat rim;
    cv::hconcat(
        std::vector<cv::Mat>{small.row(0), small.row(side - 1), small.col(0).t(), small.col(side - 1).t()},
        rim);
    std::nth_element(rim.begin<uchar>(),
                     rim.begin<uchar>() + static_cast<int>(rim.total() * rimQuantile),
                     rim.end<uchar>());
    return rim.at<uchar>(static_cast<int>(rim.total() * rimQuantile)) > paperBrightness;
}

} // namespace

std::optional<int> judgePaperSize(const cv::Mat& rgb, int present, double low, double high)
{
    const auto page = findOutline(rgb);
    if (!page) {
        const bool tooLarge = present == paperA4 && isAllPaper(rgb);
        return tooLarge ? std::optional(paperA3) : std::nullopt;
    }
    const double share = areaShare(*page, rgb.size());
    if (share < low)
        return std::nullopt;
    if (present == paperA4)
        return share > high || reachesBeyond(*page, rgb.size()) ? std::optional(paperA3) : std::nullopt;
    const double shareInA4 = share / (a4ShareOfA3 * a4ShareOfA3);
    const bool fits = shareInA4 <= high * gap && liesWithin(*page, rgb.size(), a4ShareOfA3 * gap);
    return fits ? std::optional(paperA4) : std::nullopt;
}

} // namespace mirvak
