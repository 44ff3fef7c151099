#include "LineFinder.h"

#include "SheetMap.h"

#include <algorithm>
#include <cmath>
#include <functional>

namespace mirvak {

namespace {

constexpr int angles = 90;     // bins of two degrees over half a turn
constexpr int voteSpread = 2;  // bins either side: the direction of one edge point is good to 5 degrees
constexpr int offsetBin = 2;   // pixels
constexpr int leastVotes = 30; // edge points
constexpr size_t leastPeaks = 160, peaksPerLine = 4; // of votes: many turn out to be no lines
constexpr double leastOwnShare = 0.5;                // of a line's points that no longer line has taken
constexpr double leastLength = 40;                   // pixels of well covered edge
constexpr double faintShare = 0.3;                   // of the lines that are kept
constexpr int fitReach = 3, traceReach = 2;

struct Directions
{
    float cosine[angles], sine[angles];
    Directions()
    {
        for (int i = 0; i < angles; ++i) {
            cosine[i] = static_cast<float>(std::cos(CV_PI * i / angles));
            sine[i] = static_cast<float>(std::sin(CV_PI * i / angles));
        }
    }
};

const Directions& directions()
{
    static const Directions table;
    return table;
}

bool sameLine(const EdgeLine& a, const EdgeLine& b)
{
    if (std::abs(a.normal().dot(b.normal())) < 0.9994) // 2 degrees
        return false;
    // Both ends of one lie on the other.
    for (const double t : {b.tBegin(), b.tEnd()}) {
        if (std::abs(a.normal().dot(b.at(t)) - a.offset()) > 3)
            return false;
    }
    return true;
}

/// Pixels along which the map shows the border of a sheet and the line has an edge.
double shownLength(const EdgeLine& line, const SheetMap& map)
{
    const double step = map.cell();
    const int count = static_cast<int>(std::ceil((line.tEnd() - line.tBegin()) / step));
    double length = 0;
    for (int i = 0; i < count; ++i) {
        const double t = line.tBegin() + i * step;
        length += line.isDenseAt(t) ? step * map.borderAt(line.at(t)) : 0;
    }
    return length;
}

} // namespace

const std::vector<EdgeLine>& LineFinder::find(const EdgeField& field,
                                              const EdgeLine::Planes& planes,
                                              const RegionField& regions,
                                              size_t most,
                                              const SheetMap* map)
{
    vote(field);
    findPeaks(std::max(leastPeaks, peaksPerLine * most));
    lines_.clear();
    for (const Peak& peak : peaks_)
        addLine(peak, field, planes, regions);
    dropRepeated(field, most, map);
    for (EdgeLine& line : lines_) {
        line.fit(field, traceReach, work_);
        line.trace(field, planes, traceReach);
    }
    return lines_;
}

// Lines at a slight angle to a strong edge collect points of it too. The longest line that fits takes the
// points; what lives on points of others goes. Print and patterns have strong lines without end: some of the
// places are kept for those at which the map shows a border, or else for faint ones without gaps.
void LineFinder::dropRepeated(const EdgeField& field, size_t most, const SheetMap* map)
{
    std::sort(lines_.begin(), lines_.end(), [](const EdgeLine& a, const EdgeLine& b) {
        return a.rank() > b.rank();
    });
    claimed_.create(field.size(), CV_8UC1);
    claimed_.setTo(0);
    const size_t strong = most - std::min(most, static_cast<size_t>(faintShare * static_cast<double>(most)));
    size_t kept = 0, next = 0;
    for (; next < lines_.size() && kept < strong; ++next)
        kept = claimNext(next, kept);
    orders_.clear();
    for (size_t i = next; i < lines_.size(); ++i)
        orders_.emplace_back(map ? shownLength(lines_[i], *map) : lines_[i].longestRun(), i);
    std::sort(orders_.begin(), orders_.end(), std::greater<>());
    sorted_.clear();
    for (const auto& [worth, i] : orders_)
        sorted_.push_back(std::move(lines_[i]));
    std::move(sorted_.begin(), sorted_.end(), lines_.begin() + static_cast<ptrdiff_t>(next));
    for (; next < lines_.size() && kept < most; ++next)
        kept = claimNext(next, kept);
    lines_.erase(lines_.begin() + static_cast<ptrdiff_t>(kept), lines_.end());
}

/// @return how many are kept now
size_t LineFinder::claimNext(size_t next, size_t kept)
{
    const auto owner = static_cast<unsigned char>(next % 255 + 1); // 0 is nobody
    if (lines_[next].claim(claimed_, owner) < leastOwnShare)
        return kept;
    if (kept != next)
        std::swap(lines_[kept], lines_[next]);
    return kept + 1;
}

void LineFinder::vote(const EdgeField& field)
{
    const float halfDiagonal =
        0.5F * std::hypot(static_cast<float>(field.size().width), static_cast<float>(field.size().height));
    offsets_ = static_cast<int>(2 * halfDiagonal / offsetBin) + 3;
    votes_.create(angles, offsets_, CV_32SC1);
    votes_.setTo(0);
    const Directions& table = directions();
    const float cx = 0.5F * static_cast<float>(field.size().width);
    const float cy = 0.5F * static_cast<float>(field.size().height);
    for (const EdgePoint& point : field.points()) {
        const float x = static_cast<float>(point.x) - cx, y = static_cast<float>(point.y) - cy;
        for (int i = -voteSpread; i <= voteSpread; ++i) {
            const int a = (point.direction + i + angles) % angles;
            const float offset = x * table.cosine[a] + y * table.sine[a] + halfDiagonal;
            votes_.ptr<int>(a)[static_cast<int>(offset / offsetBin)] += point.weight;
        }
    }
}

// A line between two bins counts in both; opposite ends of the angle range meet with the offset reversed.
void LineFinder::findPeaks(size_t most)
{
    const auto cell = [this](int angle, int offset) {
        if (angle < 0 || angle >= angles) {
            angle = (angle + angles) % angles;
            offset = offsets_ - 3 - offset;
        }
        return offset < 0 || offset >= offsets_ ? 0 : votes_.ptr<int>(angle)[offset];
    };
    peaks_.clear();
    for (int a = 0; a < angles; ++a) {
        const int* row = votes_.ptr<int>(a);
        for (int o = 1; o + 1 < offsets_; ++o) {
            const int votes = row[o - 1] + 2 * row[o] + row[o + 1];
            if (row[o] < row[o - 1] || row[o] <= row[o + 1] || votes < 4 * leastVotes)
                continue;
            const bool highest = row[o] >= cell(a - 1, o - 1) && row[o] >= cell(a - 1, o) &&
                                 row[o] >= cell(a - 1, o + 1) && row[o] > cell(a + 1, o - 1) &&
                                 row[o] > cell(a + 1, o) && row[o] > cell(a + 1, o + 1);
            if (highest)
                peaks_.push_back({votes, a, o});
        }
    }
    const auto more = [](const Peak& a, const Peak& b) { return a.votes > b.votes; };
    std::sort(peaks_.begin(), peaks_.end(), more);
    peaks_.resize(std::min(peaks_.size(), most));
}

void LineFinder::addLine(const Peak& peak,
                         const EdgeField& field,
                         const EdgeLine::Planes& planes,
                         const RegionField& regions)
{
    const Directions& table = directions();
    const cv::Size size = field.size();
    const cv::Point2d normal(table.cosine[peak.angle], table.sine[peak.angle]);
    const double halfDiagonal = 0.5 * std::hypot(size.width, size.height);
    const double offset = (peak.offset + 0.5) * offsetBin - halfDiagonal +
                          normal.dot(cv::Point2d(0.5 * size.width, 0.5 * size.height));
    EdgeLine line(normal, offset, size);
    if (!line.fit(field, fitReach, work_))
        return;
    line.rate(field, planes, regions);
    const bool known = std::any_of(
        lines_.begin(), lines_.end(), [&](const EdgeLine& other) { return sameLine(line, other); });
    if (!known && line.length() >= leastLength)
        lines_.push_back(std::move(line));
}

} // namespace mirvak
