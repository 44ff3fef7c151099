#include "ShotLook.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>

namespace mirvak {

namespace {

constexpr int cellsAlong = 128;
constexpr int zones = 6; // a side of the page

/// How much a cell differs from those beside it and below it, levels.
int textureAt(const cv::Mat& cells, int x, int y)
{
    const auto* row = cells.ptr(y);
    const auto* above = cells.ptr(y - 1);
    const auto* below = cells.ptr(y + 1);
    return std::abs(row[x + 1] - row[x]) + std::abs(row[x] - row[x - 1]) + std::abs(below[x] - row[x]) +
           std::abs(row[x] - above[x]);
}

} // namespace

void ShotLook::build(const cv::Mat& rgb, const Outline& page)
{
    picture_ = rgb;
    page_ = page;
    reduction_.build(rgb, cellsAlong);
    const auto& planes = reduction_.planes();
    brightness_.create(reduction_.size(), CV_8UC1);
    darkest_.create(reduction_.size(), CV_8UC1);
    for (int y = 0; y < brightness_.rows; ++y) {
        const auto *r = planes[0].ptr(y), *g = planes[1].ptr(y), *b = planes[2].ptr(y);
        for (int x = 0; x < brightness_.cols; ++x) {
            brightness_.ptr(y)[x] = static_cast<unsigned char>((r[x] + 2 * g[x] + b[x]) / 4);
            darkest_.ptr(y)[x] = std::min({r[x], g[x], b[x]});
        }
    }
    std::vector<cv::Point> corners;
    for (const cv::Point2d& corner : page.corners) {
        const cv::Point2d cell = reduction_.toReduced(corner);
        corners.emplace_back(cvRound(cell.x), cvRound(cell.y));
    }
    inPage_.create(brightness_.size(), CV_8UC1);
    inPage_.setTo(0);
    cv::fillConvexPoly(inPage_, corners, 255);
    // Cells on the page's edge show the desk, too.
    cv::polylines(inPage_, corners, true, 0, 3);
}

float ShotLook::brightnessAt(const cv::Point2d& place) const
{
    const double x = std::clamp(place.x, 0.0, picture_.cols - 1.0);
    const double y = std::clamp(place.y, 0.0, picture_.rows - 1.0);
    const int left = static_cast<int>(x), top = static_cast<int>(y);
    const int right = std::min(left + 1, picture_.cols - 1), bottom = std::min(top + 1, picture_.rows - 1);
    const auto value = [&](int column, int row) {
        const auto* p = picture_.ptr(row) + ptrdiff_t{3} * column;
        return static_cast<float>(p[0] + 2 * p[1] + p[2]) / 4;
    };
    const auto across = static_cast<float>(x - left), down = static_cast<float>(y - top);
    return (value(left, top) * (1 - across) + value(right, top) * across) * (1 - down) +
           (value(left, bottom) * (1 - across) + value(right, bottom) * across) * down;
}

std::vector<cv::Point> ShotLook::places(bool mostTexture) const
{
    const cv::Rect box = cv::boundingRect(inPage_) & cv::Rect(1, 1, inPage_.cols - 2, inPage_.rows - 2);
    std::vector<cv::Point> chosen(zones * zones, {-1, -1});
    std::vector<int> texture(zones * zones, 0);
    for (int y = box.y; y < box.br().y; ++y) {
        for (int x = box.x; x < box.br().x; ++x) {
            if (inPage_.ptr(y)[x] == 0)
                continue;
            const auto zone = static_cast<size_t>((y - box.y) * zones / box.height * zones +
                                                  (x - box.x) * zones / box.width);
            const int here = textureAt(brightness_, x, y);
            if (chosen[zone].x < 0 || (mostTexture ? here > texture[zone] : here < texture[zone])) {
                chosen[zone] = {x, y};
                texture[zone] = here;
            }
        }
    }
    chosen.erase(std::remove(chosen.begin(), chosen.end(), cv::Point(-1, -1)), chosen.end());
    return chosen;
}

float quantile(std::vector<float>& values, double share)
{
    if (values.empty())
        return 0;
    const auto last = static_cast<double>(values.size() - 1);
    const auto at = values.begin() + static_cast<ptrdiff_t>(std::lround(share * last));
    std::nth_element(values.begin(), at, values.end());
    return *at;
}

} // namespace mirvak
