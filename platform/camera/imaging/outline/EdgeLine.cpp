#include "EdgeLine.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <tuple>

namespace mirvak {

namespace {

constexpr int directionTolerance = 7; // steps of two degrees
constexpr int stride = 2;       // pixels of a step along a line: edges and colours change slowly along it
constexpr int denseWindow = 12; // steps: longer than a word, shorter than a side
constexpr int denseCount = 8;
// Pixels from the edge, where its own blur and that of a ruling have ended.
constexpr double nearestSide = 4.6;
constexpr short noEdge = 127;
constexpr int leastClearStep = 4; // levels
constexpr double patternShare = 0.3;
// What an edge between two like colours is worth: a ruling, or the rim of a sheet upon another one.
constexpr double leastClear = 0.4;
// Pixels, root of the mean square, by which the points of one edge lie off their line. Those of two edges
// that a line at a slight angle joins lie farther off.
constexpr double mostBent = 1.0;
constexpr double leastRise = 4, leastRegionRise = 12; // levels, that any line is taken to have

/// A point that moves on by the same step again and again, in 1/65536 pixels.
class Place
{
public:
    Place(const cv::Point2d& start, const cv::Point2d& step)
        : x_(fixed(start.x) + half), y_(fixed(start.y) + half), stepX_(fixed(step.x)), stepY_(fixed(step.y))
    {
    }
    /// The pixel nearest to it.
    int x() const { return static_cast<int>(x_ >> bits); }
    int y() const { return static_cast<int>(y_ >> bits); }
    void advance()
    {
        x_ += stepX_;
        y_ += stepY_;
    }

private:
    static constexpr int bits = 16;
    static constexpr std::int64_t half = 1 << (bits - 1);
    static std::int64_t fixed(double value) { return std::llround(value * (1 << bits)); }
    std::int64_t x_, y_, stepX_, stepY_;
};

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

// Looks across the line along the axis that it crosses more squarely, nearest first.
void EdgeLine::markCovered(const EdgeField& field, int reach)
{
    const double angle = std::atan2(normal_.y, normal_.x) * edgeDirections / CV_PI;
    const int direction = (static_cast<int>(std::lround(angle)) + 2 * edgeDirections) % edgeDirections;
    std::array<bool, edgeDirections + 1> fits{}; // index 0 is no edge
    for (int i = -directionTolerance; i <= directionTolerance; ++i)
        fits[static_cast<size_t>((direction + i + edgeDirections) % edgeDirections) + 1] = true;

    edge_.assign(static_cast<size_t>(end_ - begin_) / stride + 1, noEdge);
    if (end_ <= begin_) // it passes the picture
        return;
    const bool acrossRows = !isSideways();
    const cv::Point2d step = along() * stride;
    Place place(at(begin_), step);
    for (short& edge : edge_) {
        // At its ends it may lie outside by half a pixel: there the field has its frame.
        const unsigned char* here = field.directionAt(place.x(), place.y(), acrossRows);
        place.advance();
        if (fits[*here]) {
            edge = 0;
            continue;
        }
        std::uint64_t around = 0; // most places have no edge at all
        std::memcpy(&around, here - sizeof around / 2, sizeof around);
        if (!around)
            continue;
        for (int k = 1; k <= reach && edge == noEdge; ++k) {
            if (fits[here[-k]])
                edge = static_cast<short>(-k);
            else if (fits[here[k]])
                edge = static_cast<short>(k);
        }
    }
}

void EdgeLine::markDense()
{
    dense_.assign(edge_.size(), 0);
    int inWindow = 0;
    size_t marked = 0; // everything before is decided
    for (size_t i = 0; i < edge_.size(); ++i) {
        inWindow += edge_[i] != noEdge ? 1 : 0;
        if (i >= denseWindow)
            inWindow -= edge_[i - denseWindow] != noEdge ? 1 : 0;
        if (inWindow < denseCount)
            continue;
        const size_t from = std::max(marked, i + 1 > denseWindow ? i + 1 - denseWindow : 0);
        std::fill(
            dense_.begin() + static_cast<ptrdiff_t>(from), dense_.begin() + static_cast<ptrdiff_t>(i) + 1, 1);
        marked = i + 1;
    }
}

cv::Point EdgeLine::edgeAt(size_t step) const
{
    const cv::Point2d p = at(begin_ + stride * static_cast<double>(step));
    const int away = edge_[step];
    return isSideways() ? cv::Point(cvRound(p.x) + away, cvRound(p.y))
                        : cv::Point(cvRound(p.x), cvRound(p.y) + away);
}

bool EdgeLine::fit(const EdgeField& field, int reach, std::vector<cv::Point2f>& work)
{
    markCovered(field, reach);
    markDense();
    work.clear();
    for (size_t i = 0; i < dense_.size(); ++i) {
        if (dense_[i] && edge_[i] != noEdge)
            work.emplace_back(edgeAt(i));
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
    const double across = (xx + yy) / 2 - std::hypot((xx - yy) / 2, xy);
    straightness_ = 1 / std::max(1.0, across / (mostBent * mostBent * static_cast<double>(work.size())));
    cv::Point2d normal(-std::sin(angle), std::cos(angle));
    if (normal.dot(normal_) < 0)
        normal = -normal;
    normal_ = normal;
    offset_ = normal.dot(mean);
    findEnds(picture_);
    return true;
}

/// By how much the sums of the two sides differ at least where they differ clearly.
int EdgeLine::clearStepOf(const EdgeField& field)
{
    return sideDepth * std::max(leastClearStep, static_cast<int>(0.75 * field.threshold()));
}

/// Where on both sides of a line its colours are looked at: pixels from it, the same all along.
EdgeLine::Beside EdgeLine::beside() const
{
    Beside places;
    for (size_t i = 0; i < places.size(); ++i) {
        const double away = nearestSide + 1.5 * static_cast<double>(i);
        places[i] = {cvRound(normal_.x * away), cvRound(normal_.y * away)};
    }
    return places;
}

// Colour beyond the line, in the direction of its normal, minus colour before it; the sum of sideDepth
// pixels.
std::array<int, 3> EdgeLine::riseAt(const Planes& planes, double t, const Beside& beside) const
{
    constexpr int farthest = static_cast<int>(nearestSide + 1.5 * (sideDepth - 1)) + 1;
    const cv::Point2d p = at(t);
    const int x = cvRound(p.x), y = cvRound(p.y);
    const bool atBorder =
        x < farthest || y < farthest || x >= picture_.width - farthest || y >= picture_.height - farthest;
    std::array<int, 3> rise{};
    for (const cv::Point& away : beside) {
        cv::Point to(x + away.x, y + away.y), from(x - away.x, y - away.y);
        if (atBorder) {
            for (cv::Point* point : {&to, &from}) {
                point->x = std::clamp(point->x, 0, picture_.width - 1);
                point->y = std::clamp(point->y, 0, picture_.height - 1);
            }
        }
        const size_t stride = planes[0].step, a = to.y * stride + to.x, b = from.y * stride + from.x;
        for (size_t c = 0; c < 3; ++c)
            rise[c] += planes[c].data[a] - planes[c].data[b];
    }
    return rise;
}

void EdgeLine::add(Tally& tally, const std::array<int, 3>& rise, int clearStep)
{
    const std::array<int, 3> size{std::abs(rise[0]), std::abs(rise[1]), std::abs(rise[2])};
    tally.clear += *std::max_element(size.begin(), size.end()) >= clearStep ? 1 : 0;
    tally.size += size[0] + size[1] + size[2];
    for (size_t c = 0; c < 3; ++c)
        tally.rise[c] += rise[c];
}

void EdgeLine::trace(const EdgeField& field, const Planes& planes, int reach)
{
    markCovered(field, reach);
    const int clearStep = clearStepOf(field);
    const Beside places = beside();
    tallies_.assign(edge_.size() + 1, Tally());
    covered_.assign(edge_.size() + 1, 0);
    for (size_t i = 0; i < edge_.size(); ++i) {
        covered_[i + 1] = static_cast<short>(covered_[i] + (edge_[i] != noEdge ? 1 : 0));
        tallies_[i + 1] = tallies_[i];
        add(tallies_[i + 1], riseAt(planes, begin_ + stride * static_cast<double>(i), places), clearStep);
    }
}

// A run along which the sides differ now one way and now the other is pattern rather than the edge of a
// thing. The grain of a desk is as long as a page, but pale against it.
void EdgeLine::rate(const EdgeField& field, const Planes& planes, const RegionField& regions)
{
    constexpr size_t sampled = 2; // steps
    const int clearStep = clearStepOf(field);
    const Beside places = beside();
    length_ = rank_ = longestRun_ = 0;
    for (size_t i = 0; i < dense_.size(); ++i) {
        if (!dense_[i])
            continue;
        const size_t start = i;
        Tally run{};
        std::array<int, 4> regional{};
        int samples = 0;
        for (; i < dense_.size() && dense_[i]; i += sampled, ++samples) {
            const double t = begin_ + stride * static_cast<double>(i);
            add(run, riseAt(planes, t, places), clearStep);
            const std::array<int, 4> rise = regions.riseAcross(at(t), normal_);
            for (size_t c = 0; c < regional.size(); ++c)
                regional[c] += rise[c];
        }
        i = std::min(i, dense_.size());
        const Stretch stretch = stretchOf(run, samples);
        const double length = std::max(stretch.clear, leastClear) * stride * static_cast<double>(i - start);
        length_ += length;
        longestRun_ = std::max(longestRun_, stride * static_cast<double>(i - start));
        rank_ +=
            straightness_ * length * (patternShare + (1 - patternShare) * stretch.steady) *
            std::sqrt((std::abs(stretch.rise) + leastRise) *
                      (static_cast<double>(RegionField::distance(regional)) / samples + leastRegionRise));
    }
}

double EdgeLine::claim(cv::Mat& claimed, unsigned char owner) const
{
    int all = 0, own = 0;
    for (size_t i = 0; i < dense_.size(); ++i) {
        if (!dense_[i] || edge_[i] == noEdge)
            continue;
        cv::Point point = edgeAt(i);
        if (point.x < 0 || point.y < 0 || point.x >= picture_.width || point.y >= picture_.height)
            continue;
        (isSideways() ? point.y : point.x) &= ~(stride - 1); // lines step at different places
        unsigned char& mark = claimed.ptr(point.y)[point.x];
        mark = mark ? mark : owner;
        own += mark == owner ? 1 : 0;
        ++all;
    }
    return all ? static_cast<double>(own) / all : 0;
}

size_t EdgeLine::stepAt(double t) const
{
    const double steps = (t - begin_) * (1.0 / stride) + 0.5;
    return static_cast<size_t>(std::clamp(steps, 0.0, static_cast<double>(covered_.size()) - 1));
}

bool EdgeLine::isDenseAt(double t) const
{
    const auto step = static_cast<size_t>(std::max(0.0, (t - begin_) / stride));
    return step < dense_.size() && dense_[step];
}

double EdgeLine::coveredBetween(double from, double to) const
{
    if (covered_.empty() || to - from < 1)
        return 0;
    return std::min(1.0, stride * (covered_[stepAt(to)] - covered_[stepAt(from)]) / (to - from));
}

double EdgeLine::coveredBefore(double t) const
{
    return covered_.empty() ? 0 : stride * covered_[stepAt(t)];
}

Stretch EdgeLine::stretchOf(const Tally& sum, double length)
{
    Stretch stretch;
    stretch.clear = sum.clear / length;
    const int steady = std::abs(sum.rise[0]) + std::abs(sum.rise[1]) + std::abs(sum.rise[2]);
    stretch.steady = steady / std::max(1.0, static_cast<double>(sum.size));
    stretch.rise = (sum.rise[0] + 2 * sum.rise[1] + sum.rise[2]) / (4 * sideDepth * length);
    return stretch;
}

Stretch EdgeLine::between(double from, double to) const
{
    if (tallies_.empty() || to - from < 1)
        return {};
    const size_t first = stepAt(from), last = stepAt(to);
    Tally part = tallies_[last];
    const Tally& before = tallies_[first];
    part.clear -= before.clear;
    part.size -= before.size;
    for (size_t c = 0; c < 3; ++c)
        part.rise[c] -= before.rise[c];
    Stretch stretch = stretchOf(part, (to - from) / stride);
    stretch.covered = coveredBetween(from, to);
    return stretch;
}

} // namespace mirvak
