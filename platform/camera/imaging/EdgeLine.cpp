#include "LineFinder.h"

#include <algorithm>
#include <cmath>

namespace mirvak {

namespace {

constexpr double tanTolerance = 0.42; // of an edge point's direction against the line's: 23 degrees
constexpr int denseWindow = 24;       // pixels: longer than a word, shorter than a side
constexpr double denseShare = 0.7;

} // namespace

EdgeLine::EdgeLine(const cv::Point2d& normal, double offset, const cv::Size& picture)
    : normal_(normal), offset_(offset), picture_(picture)
{
    findEnds(picture);
}

EdgeLine EdgeLine::border(const cv::Point2d& normal, double offset, const cv::Size& picture)
{
    EdgeLine line(normal, offset, picture);
    line.border_ = true;
    return line;
}

// Clips the endless line to the picture, one axis after the other.
void EdgeLine::findEnds(const cv::Size& picture)
{
    const cv::Point2d foot = normal_ * offset_, d = along();
    begin_ = -1e9;
    end_ = 1e9;
    for (const auto& [start, step, size] :
         {std::make_tuple(foot.x, d.x, picture.width), std::make_tuple(foot.y, d.y, picture.height)}) {
        const double low = -start, high = size - 1 - start;
        if (std::abs(step) < 1e-9) {
            if (low > 0.5 || high < -0.5)
                end_ = begin_;
            continue;
        }
        begin_ = std::max(begin_, std::min(low / step, high / step));
        end_ = std::min(end_, std::max(low / step, high / step));
    }
}

// Steps across the line along the axis that it crosses more squarely, nearest first.
const EdgePoint* EdgeLine::nearest(const EdgeField& field, double t, int reach) const
{
    const cv::Point2d p = at(t);
    const int x = cvRound(p.x), y = cvRound(p.y);
    const bool sideways = std::abs(normal_.x) > std::abs(normal_.y);
    for (int i = 0; i <= 2 * reach; ++i) {
        const int away = (i + 1) / 2 * (i % 2 ? 1 : -1);
        const int px = sideways ? x + away : x, py = sideways ? y : y + away;
        if (px < 0 || py < 0 || px >= picture_.width || py >= picture_.height)
            continue;
        const int index = field.index().ptr<int>(py)[px];
        if (index == 0)
            continue;
        const EdgePoint& point = field.points()[static_cast<size_t>(index - 1)];
        const double across = std::abs(point.gx * normal_.x + point.gy * normal_.y);
        const double aslant = std::abs(point.gx * normal_.y - point.gy * normal_.x);
        if (aslant <= tanTolerance * across)
            return &point;
    }
    return nullptr;
}

void EdgeLine::trace(const EdgeField& field, int reach)
{
    const int length = std::max(0, static_cast<int>(end_ - begin_) + 1);
    covered_.assign(static_cast<size_t>(length) + 1, 0);
    rising_.assign(static_cast<size_t>(length) + 1, 0);
    for (int i = 0; i < length; ++i) {
        const EdgePoint* point = nearest(field, begin_ + i, reach);
        const auto n = static_cast<size_t>(i);
        const bool rising = point && point->gx * normal_.x + point->gy * normal_.y > 0;
        covered_[n + 1] = static_cast<short>(covered_[n] + (point ? 1 : 0));
        rising_[n + 1] = static_cast<short>(rising_[n] + (!point ? 0 : rising ? 1 : -1));
    }
    markDense();
}

void EdgeLine::markDense()
{
    const int length = static_cast<int>(covered_.size()) - 1;
    dense_.assign(static_cast<size_t>(std::max(length, 0)), 0);
    for (int i = 0; i + denseWindow <= length; ++i) {
        const int inWindow =
            covered_[static_cast<size_t>(i + denseWindow)] - covered_[static_cast<size_t>(i)];
        if (inWindow >= denseShare * denseWindow)
            std::fill_n(dense_.begin() + i, denseWindow, static_cast<unsigned char>(1));
    }
    denseLength_ = static_cast<double>(std::count(dense_.begin(), dense_.end(), 1));
}

bool EdgeLine::fit(const EdgeField& field, int reach, std::vector<cv::Point2f>& work)
{
    trace(field, reach);
    work.clear();
    for (size_t i = 0; i < dense_.size(); ++i) {
        const EdgePoint* point = dense_[i] ? nearest(field, begin_ + static_cast<double>(i), reach) : nullptr;
        if (point)
            work.emplace_back(point->x, point->y);
    }
    if (work.size() < denseWindow)
        return false;
    cv::Point2d mean(0, 0);
    for (const cv::Point2f& p : work)
        mean += cv::Point2d(p);
    mean /= static_cast<double>(work.size());
    double xx = 0, xy = 0, yy = 0;
    for (const cv::Point2f& p : work) {
        const cv::Point2d d = cv::Point2d(p) - mean;
        xx += d.x * d.x;
        xy += d.x * d.y;
        yy += d.y * d.y;
    }
    const double angle = 0.5 * std::atan2(2 * xy, xx - yy); // of the line itself
    cv::Point2d normal(-std::sin(angle), std::cos(angle));
    if (normal.dot(normal_) < 0)
        normal = -normal;
    normal_ = normal;
    offset_ = normal.dot(mean);
    findEnds(picture_);
    return true;
}

double EdgeLine::share(const std::vector<short>& sums, double from, double to) const
{
    if (sums.size() < 2 || to - from < 1)
        return 0;
    const auto last = static_cast<double>(sums.size() - 1);
    const auto a = static_cast<size_t>(std::clamp(from - begin_, 0.0, last));
    const auto b = static_cast<size_t>(std::clamp(to - begin_, 0.0, last));
    return (sums[b] - sums[a]) / (to - from);
}

double EdgeLine::coverage(double from, double to) const
{
    return share(covered_, from, to);
}

double EdgeLine::polarity(double from, double to) const
{
    return share(rising_, from, to);
}

} // namespace mirvak
