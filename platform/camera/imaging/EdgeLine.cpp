#include "EdgeLine.h"

#include <algorithm>
#include <cmath>
#include <tuple>

namespace mirvak {

namespace {

constexpr int directionTolerance = 7; // steps of two degrees
constexpr int denseWindow = 24;       // pixels: longer than a word, shorter than a side
constexpr int denseCount = 17;
// Pixels from the edge, where its own blur and that of a ruling have ended.
constexpr double nearestSide = 4.6;
constexpr int sideDepth = 3;      // pixels that are averaged
constexpr int leastClearStep = 4; // levels
constexpr double patternShare = 0.3;

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
    end_ = std::max(begin_, end_);
}

// Steps across the line along the axis that it crosses more squarely, nearest first.
bool EdgeLine::follows(const EdgeField& field, double t, int reach, cv::Point& point) const
{
    const cv::Point2d p = at(t);
    const int x = cvRound(p.x), y = cvRound(p.y);
    const bool sideways = std::abs(normal_.x) > std::abs(normal_.y);
    for (int i = 0; i <= 2 * reach; ++i) {
        const int away = (i + 1) / 2 * (i % 2 ? 1 : -1);
        const int px = sideways ? x + away : x, py = sideways ? y : y + away;
        if (px < 0 || py < 0 || px >= picture_.width || py >= picture_.height)
            continue;
        if (fits_[field.directions().ptr(py)[px]]) {
            point = {px, py};
            return true;
        }
    }
    return false;
}

void EdgeLine::markCovered(const EdgeField& field, int reach)
{
    double angle = std::atan2(normal_.y, normal_.x) * edgeDirections / CV_PI;
    const int direction = (static_cast<int>(std::lround(angle)) + 2 * edgeDirections) % edgeDirections;
    for (int i = 0; i < edgeDirections; ++i) {
        const int apart = std::abs(i - direction);
        fits_[static_cast<size_t>(i) + 1] = std::min(apart, edgeDirections - apart) <= directionTolerance;
    }
    const auto count = static_cast<size_t>(end_ - begin_) + 1;
    covered_.assign(count, 0);
    dense_.assign(count, 0);
    cv::Point ignored;
    int inWindow = 0;
    for (size_t i = 0; i < count; ++i) {
        covered_[i] = follows(field, begin_ + static_cast<double>(i), reach, ignored);
        inWindow += covered_[i] - (i >= denseWindow ? covered_[i - denseWindow] : 0);
        if (inWindow < denseCount)
            continue;
        for (size_t k = i + 1; k > 0 && i + 1 - k < denseWindow && !(dense_[k - 1] && k <= i); --k)
            dense_[k - 1] = 1;
    }
}

bool EdgeLine::fit(const EdgeField& field, int reach, std::vector<cv::Point2f>& work)
{
    markCovered(field, reach);
    work.clear();
    cv::Point point;
    for (size_t i = 0; i < dense_.size(); ++i) {
        if (dense_[i] && covered_[i] && follows(field, begin_ + static_cast<double>(i), reach, point))
            work.emplace_back(point);
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

// Colour beyond the line, in the direction of its normal, minus colour before it.
std::array<int, 3> EdgeLine::riseAt(const Planes& planes, double t) const
{
    std::array<int, 3> rise{};
    const cv::Point2d p = at(t);
    for (int i = 0; i < sideDepth; ++i) {
        const cv::Point2d away = normal_ * (nearestSide + i);
        const int x1 = std::clamp(cvRound(p.x + away.x), 0, picture_.width - 1);
        const int y1 = std::clamp(cvRound(p.y + away.y), 0, picture_.height - 1);
        const int x0 = std::clamp(cvRound(p.x - away.x), 0, picture_.width - 1);
        const int y0 = std::clamp(cvRound(p.y - away.y), 0, picture_.height - 1);
        for (size_t c = 0; c < 3; ++c)
            rise[c] += planes[c].ptr(y1)[x1] - planes[c].ptr(y0)[x0];
    }
    return rise;
}

void EdgeLine::trace(const EdgeField& field, const Planes& planes, int reach)
{
    markCovered(field, reach);
    const int clearStep = sideDepth * std::max(leastClearStep, static_cast<int>(0.75 * field.threshold()));
    tallies_.assign(covered_.size() + 1, Tally());
    for (size_t i = 0; i < covered_.size(); ++i) {
        const std::array<int, 3> rise = riseAt(planes, begin_ + static_cast<double>(i));
        const int most = std::max({std::abs(rise[0]), std::abs(rise[1]), std::abs(rise[2])});
        const bool clear = most >= clearStep;
        const Tally& before = tallies_[i];
        Tally& after = tallies_[i + 1];
        after.covered = before.covered + covered_[i];
        after.clear = before.clear + (clear ? 1 : 0);
        after.size = before.size + std::abs(rise[0]) + std::abs(rise[1]) + std::abs(rise[2]);
        for (size_t c = 0; c < 3; ++c)
            after.rise[c] = before.rise[c] + rise[c];
    }
    rateRuns();
}

// A run along which the sides differ now one way and now the other is pattern rather than the edge of a
// thing. The grain of a desk is as long as a page, but pale against it.
void EdgeLine::rateRuns()
{
    length_ = rank_ = 0;
    for (size_t i = 0; i < dense_.size(); ++i) {
        if (!dense_[i])
            continue;
        const size_t start = i;
        while (i < dense_.size() && dense_[i])
            ++i;
        const Stretch run = between(begin_ + static_cast<double>(start), begin_ + static_cast<double>(i));
        const double length = run.clear * static_cast<double>(i - start);
        length_ += length;
        rank_ +=
            length * (patternShare + (1 - patternShare) * run.steady) * std::sqrt(std::abs(run.rise) + 4);
    }
}

double EdgeLine::claim(const EdgeField& field, cv::Mat& claimed, int reach) const
{
    int all = 0, unclaimed = 0;
    cv::Point point;
    for (size_t i = 0; i < dense_.size(); ++i) {
        if (!dense_[i] || !covered_[i] || !follows(field, begin_ + static_cast<double>(i), reach, point))
            continue;
        unsigned char& mark = claimed.ptr(point.y)[point.x];
        unclaimed += mark ? 0 : 1;
        ++all;
        mark = 1;
    }
    return all ? static_cast<double>(unclaimed) / all : 0;
}

const EdgeLine::Tally& EdgeLine::tallyAt(double t) const
{
    const double last = static_cast<double>(tallies_.size()) - 1;
    return tallies_[static_cast<size_t>(std::clamp(t - begin_, 0.0, last))];
}

double EdgeLine::coveredBetween(double from, double to) const
{
    if (tallies_.empty() || to - from < 1)
        return 0;
    return (tallyAt(to).covered - tallyAt(from).covered) / (to - from);
}

Stretch EdgeLine::between(double from, double to) const
{
    if (tallies_.empty() || to - from < 1)
        return {};
    const Tally& a = tallyAt(from);
    const Tally& b = tallyAt(to);
    int most = 0;
    for (size_t c = 0; c < 3; ++c)
        most += std::abs(b.rise[c] - a.rise[c]);
    Stretch stretch;
    stretch.covered = (b.covered - a.covered) / (to - from);
    stretch.clear = (b.clear - a.clear) / (to - from);
    stretch.steady = most / std::max(1.0, static_cast<double>(b.size - a.size));
    stretch.rise = (b.rise[0] - a.rise[0] + 2 * (b.rise[1] - a.rise[1]) + b.rise[2] - a.rise[2]) /
                   (4 * sideDepth * (to - from));
    return stretch;
}

} // namespace mirvak
