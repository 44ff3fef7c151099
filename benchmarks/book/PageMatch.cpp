#include "PageMatch.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>

namespace {

constexpr double leastCorrelation = 0.55;
constexpr int rim = 16;                 // px around the page's frame; as far as any search goes
constexpr double softness = 1.3;        // px, of both
constexpr double leastContrast = 0.012; // of a patch: paper alone tells nothing

cv::Mat withoutLight(const cv::Mat& rgb)
{
    cv::Mat grey, paper, result;
    cv::cvtColor(rgb, grey, cv::COLOR_RGB2GRAY);
    cv::resize(grey,
               grey,
               {PageMatch::width, std::max(8, rgb.rows * PageMatch::width / rgb.cols)},
               0,
               0,
               cv::INTER_AREA);
    cv::morphologyEx(grey, paper, cv::MORPH_CLOSE, cv::getStructuringElement(cv::MORPH_ELLIPSE, {25, 25}));
    cv::GaussianBlur(paper, paper, {}, 12);
    cv::divide(grey, paper, result, 1, CV_32F);
    return cv::min(result, 1.2);
}

/// The peak of a parabola through three values, -0.5 to 0.5 from the middle one.
double peak(double before, double at, double after)
{
    const double bend = before - 2 * at + after;
    return bend < 0 ? std::clamp((before - after) / (2 * bend), -0.5, 0.5) : 0;
}

} // namespace

cv::Point2d PageMatch::Surface::at(cv::Point2d truth) const
{
    const double u = truth.x / width - 0.5, v = truth.y / width - 0.5;
    cv::Point2d sum;
    double vs = 1;
    for (int j = 0, k = 0; j <= down; ++j, vs *= v) {
        double us = vs;
        for (int i = 0; i <= across; ++i, ++k, us *= u)
            sum += cv::Point2d(x[size_t(k)] * us, y[size_t(k)] * us);
    }
    return sum;
}

/// Least squares, three times, each time without what lies far off (more than four median distances and a
/// little).
PageMatch::Surface PageMatch::fit(std::vector<Point> points, int across, int down)
{
    Surface surface{across, down, {}, {}};
    const int terms = (across + 1) * (down + 1);
    for (int round = 0; round < 3; ++round) {
        cv::Mat a(int(points.size()), terms, CV_64F), b(int(points.size()), 2, CV_64F), c;
        for (int row = 0; row < a.rows; ++row) {
            const Point& p = points[size_t(row)];
            const double u = p.truth.x / width - 0.5, v = p.truth.y / width - 0.5;
            for (int j = 0, k = 0; j <= down; ++j)
                for (int i = 0; i <= across; ++i, ++k)
                    a.at<double>(row, k) = std::pow(u, i) * std::pow(v, j);
            b.at<double>(row, 0) = p.picture.x;
            b.at<double>(row, 1) = p.picture.y;
        }
        cv::solve(a, b, c, cv::DECOMP_SVD);
        surface.x.assign(size_t(terms), 0);
        surface.y.assign(size_t(terms), 0);
        for (int k = 0; k < terms; ++k) {
            surface.x[size_t(k)] = c.at<double>(k, 0);
            surface.y[size_t(k)] = c.at<double>(k, 1);
        }
        std::vector<double> off;
        for (const Point& p : points)
            off.push_back(cv::norm(surface.at(p.truth) - p.picture));
        std::vector<double> sorted = off;
        std::nth_element(sorted.begin(), sorted.begin() + ptrdiff_t(sorted.size() / 2), sorted.end());
        const double limit = 4 * sorted[sorted.size() / 2] + 3;
        std::vector<Point> kept;
        for (size_t i = 0; i < points.size(); ++i)
            if (off[i] <= limit)
                kept.push_back(points[i]);
        if (int(kept.size()) < 2 * terms)
            break;
        points = kept;
    }
    return surface;
}

PageMatch::Level PageMatch::levelAt(double scale) const
{
    Level level{scale, {}, {}};
    const cv::Size size(int(truth_.cols * scale), int(truth_.rows * scale));
    cv::resize(truth_, level.truth, size, 0, 0, cv::INTER_AREA);
    cv::Mat map(size.height + 2 * rim, size.width + 2 * rim, CV_32FC2);
    map.forEach<cv::Point2f>([&](cv::Point2f& p, const int* at) {
        p = surface_.at({(at[1] - rim + 0.5) / scale - 0.5, (at[0] - rim + 0.5) / scale - 0.5});
    });
    cv::Mat soft = picture_;
    if (scale < 1)
        cv::GaussianBlur(picture_, soft, {}, 0.5 / scale);
    cv::remap(soft, level.moved, map, {}, cv::INTER_LINEAR, cv::BORDER_REPLICATE);
    // A stroke of one pixel would be another one when it stands half a pixel beside.
    const double sigma = scale < 1 ? softness / 2 : softness;
    cv::GaussianBlur(level.truth, level.truth, {}, sigma);
    cv::GaussianBlur(level.moved, level.moved, {}, sigma);
    return level;
}

std::vector<PageMatch::Point>
PageMatch::lookAt(const std::vector<cv::Point2d>& points, const Level& level, int patch, int search) const
{
    const cv::Mat& truth = level.truth;
    std::vector<Point> found;
    for (const cv::Point2d& point : points) {
        const cv::Point at(int(std::lround(point.x * level.scale)), int(std::lround(point.y * level.scale)));
        const cv::Rect small(at.x - patch / 2, at.y - patch / 2, patch, patch);
        const cv::Rect wide(
            small.x - search + rim, small.y - search + rim, patch + 2 * search, patch + 2 * search);
        if ((small & cv::Rect({0, 0}, truth.size())) != small)
            continue;
        cv::Scalar mean, deviation;
        cv::meanStdDev(truth(small), mean, deviation);
        if (deviation[0] < leastContrast)
            continue;
        cv::Mat likeness;
        cv::matchTemplate(level.moved(wide), truth(small), likeness, cv::TM_CCOEFF_NORMED);
        cv::Point best;
        double value = 0;
        cv::minMaxLoc(likeness, nullptr, &value, nullptr, &best);
        const bool isAtRim = best.x == 0 || best.y == 0 || best.x == 2 * search || best.y == 2 * search;
        if (value < leastCorrelation || isAtRim)
            continue;
        const auto l = [&](int x, int y) { return double(likeness.at<float>(best.y + y, best.x + x)); };
        const cv::Point2d shift(best.x - search + peak(l(-1, 0), l(0, 0), l(1, 0)),
                                best.y - search + peak(l(0, -1), l(0, 0), l(0, 1)));
        // The patch stands where its whole pixels are, which is not quite the point that was asked for.
        found.push_back({point, surface_.at(point + shift / level.scale)});
    }
    return found;
}

bool PageMatch::refine(double scale, int cells, int patch, int search, int across, int down)
{
    std::vector<cv::Point2d> points;
    const double step = double(width) / cells;
    for (int row = 0; row < int(truth_.rows / step); ++row)
        for (int column = 0; column < cells; ++column)
            points.emplace_back((column + 0.5) * step, (row + 0.5) * step);
    const std::vector<Point> found = lookAt(points, levelAt(scale), patch, search);
    if (int(found.size()) < 2 * (across + 1) * (down + 1))
        return false;
    surface_ = fit(found, across, down);
    return true;
}

PageMatch::PageMatch(const cv::Mat& truth, const cv::Mat& picture)
    : truth_(withoutLight(truth)), picture_(withoutLight(picture))
{
    // At first: both are the same page, one a little longer perhaps.
    const double longer = double(picture_.rows) / truth_.rows;
    surface_ = {1, 1, {width / 2.0, double(width), 0, 0}, {longer * width / 2.0, 0, longer * width, 0}};
    refine(0.125, 9, 34, 15, 1, 1);
    refine(0.125, 12, 26, 9, 1, 1);
    const bool isNear = refine(0.25, 18, 38, 9, 3, 2);
    found_ = isNear && refine(0.5, 18, 44, 12, 5, 2) && refine(1, 26, 48, 14, 6, 3);
    if (!found_)
        return;
    finest_ = levelAt(1);
    // Beyond the print nothing was seen: only a stiff surface may be asked there.
    std::vector<cv::Point2d> points;
    for (int y = 25; y < truth_.rows; y += 50)
        for (int x = 25; x < truth_.cols; x += 50)
            points.emplace_back(x, y);
    const std::vector<Point> seen = find(points);
    found_ = seen.size() >= 20;
    if (found_)
        flat_ = fit(seen, 1, 1);
}

std::vector<PageMatch::Point> PageMatch::find(const std::vector<cv::Point2d>& points) const
{
    constexpr int patch = 40, search = 9;
    return lookAt(points, finest_, patch, search);
}

cv::Mat PageMatch::aligned(const cv::Mat& picture) const
{
    cv::Mat scaled, map(truth_.size(), CV_32FC2), result;
    cv::resize(picture, scaled, picture_.size(), 0, 0, cv::INTER_AREA);
    map.forEach<cv::Point2f>([&](cv::Point2f& p, const int* at) { p = flat_.at(cv::Point2d(at[1], at[0])); });
    cv::remap(scaled, result, map, {}, cv::INTER_LINEAR, cv::BORDER_REPLICATE);
    return result;
}
