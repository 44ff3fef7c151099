#include "QuadFinder.h"

#include "QuadOverlap.h"
#include "QuadRating.h"
#include "SheetMap.h"

#include <algorithm>
#include <cmath>

namespace mirvak {

namespace {

constexpr double outsideShare = 0.02;    // of the picture: a corner may lie that far outside
constexpr double leastSide = 0.055;      // of the longer side of the picture: an identity card on A3
constexpr double longestToShortest = 12; // a receipt
constexpr double leastArea = 0.008;
constexpr size_t mostOutlines = 40, mostSheets = 200;
constexpr double leastSheet = 0.5;  // confidence worth keeping among many
constexpr double sameOutline = 6;   // pixels between corners
constexpr int mostTries = 6000;     // outlines of long lines come first; a pattern has no end of them
constexpr double unseenWorth = 0.4; // of an outline where the map shows nothing

double cross(const cv::Point2d& a, const cv::Point2d& b)
{
    return a.x * b.y - a.y * b.x;
}

double angleCosine(const cv::Point2d& a, const cv::Point2d& b)
{
    return a.dot(b) / std::max(1e-9, cv::norm(a) * cv::norm(b));
}

// Corners between 50 and 130 degrees: a camera that stands over the desk sees no more.
bool shapeIsPossible(const std::array<cv::Point2d, 4>& p, double longest)
{
    double shortestSide = 1e9, longestSide = 0;
    for (size_t i = 0; i < 4; ++i) {
        const cv::Point2d in = p[i] - p[(i + 3) % 4], out = p[(i + 1) % 4] - p[i];
        if (cross(in, out) <= 0 || std::abs(angleCosine(in, out)) > 0.64)
            return false;
        shortestSide = std::min(shortestSide, cv::norm(out));
        longestSide = std::max(longestSide, cv::norm(out));
    }
    const auto ratio = [&](size_t i) {
        return cv::norm(p[i + 1] - p[i]) / cv::norm(p[(i + 3) % 4] - p[(i + 2) % 4]);
    };
    const double r0 = ratio(0), r1 = ratio(1);
    return shortestSide >= leastSide * longest && longestSide <= longestToShortest * shortestSide &&
           r0 > 0.5 && r0 < 2 && r1 > 0.5 && r1 < 2;
}

bool isNearPicture(const cv::Point2d& point, const cv::Size& size)
{
    const double marginX = outsideShare * size.width, marginY = outsideShare * size.height;
    return point.x >= -marginX && point.x <= size.width - 1 + marginX && point.y >= -marginY &&
           point.y <= size.height - 1 + marginY;
}

// The same corners within `tolerance`, whichever comes first.
bool isRotationOf(const std::array<cv::Point2d, 4>& a, const std::array<cv::Point2d, 4>& b, double tolerance)
{
    for (size_t first = 0; first < 4; ++first) {
        size_t same = 0;
        while (same < 4 && cv::norm(a[(first + same) % 4] - b[same]) <= tolerance)
            ++same;
        if (same == 4)
            return true;
    }
    return false;
}

} // namespace

const std::vector<Outline>&
QuadFinder::find(const std::vector<EdgeLine>& lines, const cv::Size& size, Search search, const SheetMap* map)
{
    map_ = map;
    size_ = size;
    search_ = search;
    best_.clear();
    added_.clear();
    collectLines(lines);
    findCrossings();
    tryQuads();
    outlines_.clear();
    for (const Quad& quad : best_)
        outlines_.push_back({quad.corners, quad.confidence});
    return outlines_;
}

void QuadFinder::add(const std::array<cv::Point2d, 4>& corners,
                     const EdgeField& field,
                     const EdgeLine::Planes& planes)
{
    const double longest = std::max(size_.width, size_.height);
    const bool mayBeSeen = std::all_of(corners.begin(), corners.end(), [&](const cv::Point2d& corner) {
        return isNearPicture(corner, size_);
    });
    if (!mayBeSeen || !shapeIsPossible(corners, longest))
        return;
    Quad quad;
    quad.corners = corners;
    quad.area = areaOf(corners) / size_.area();
    int seen = 0;
    for (size_t i = 0; i < 4; ++i) {
        const cv::Point2d &from = corners[i], &to = corners[(i + 1) % 4];
        const EdgeLine* line = tracedSide(from, to, field, planes);
        seen += line->isBorder() ? 0 : 1;
        quad.sides[i] = {line, line->positionOf(from), line->positionOf(to)};
    }
    if (seen < 2 || quad.area < leastArea)
        return;
    quadRating::rate(quad, search_);
    if (!dropsRivals(quad))
        best_.push_back(quad);
}

/// The line through both corners. Outlines of which one is made of the other have most of theirs in common.
const EdgeLine* QuadFinder::tracedSide(const cv::Point2d& from,
                                       const cv::Point2d& to,
                                       const EdgeField& field,
                                       const EdgeLine::Planes& planes)
{
    constexpr double atBorder = 3, sameLine = 0.01; // pixels
    constexpr int traceReach = 3;
    const cv::Point2d way = (to - from) / cv::norm(to - from), normal(way.y, -way.x);
    const auto holds = [](const EdgeLine& line, const cv::Point2d& point) {
        return std::abs(line.normal().dot(point) - line.offset()) < sameLine;
    };
    const auto known = std::find_if(added_.begin(), added_.end(), [&](const EdgeLine& line) {
        return line.normal().dot(normal) > 0 && holds(line, from) && holds(line, to);
    });
    if (known != added_.end())
        return &*known;
    const bool isBorder = liesOnBorder(from, to, size_, atBorder);
    added_.push_back(isBorder ? EdgeLine::border(normal, normal.dot(from), size_)
                              : EdgeLine(normal, normal.dot(from), size_));
    if (!isBorder)
        added_.back().trace(field, planes, traceReach);
    return &added_.back();
}

void QuadFinder::collectLines(const std::vector<EdgeLine>& lines)
{
    borders_.clear();
    borders_.push_back(EdgeLine::border({1, 0}, 0, size_));
    borders_.push_back(EdgeLine::border({1, 0}, size_.width - 1, size_));
    borders_.push_back(EdgeLine::border({0, 1}, 0, size_));
    borders_.push_back(EdgeLine::border({0, 1}, size_.height - 1, size_));
    lines_.clear();
    for (const EdgeLine& line : lines)
        lines_.push_back(&line);
    for (const EdgeLine& line : borders_)
        lines_.push_back(&line);
}

void QuadFinder::findCrossings()
{
    crossings_.assign(lines_.size() * lines_.size(), Crossing());
    for (size_t i = 0; i < lines_.size(); ++i) {
        for (size_t k = i + 1; k < lines_.size(); ++k) {
            const cv::Point2d& n = line(i).normal();
            const cv::Point2d& m = line(k).normal();
            const double sine = cross(n, m);
            if (std::abs(sine) < 0.76) // 50 degrees
                continue;
            const double p = line(i).offset(), q = line(k).offset();
            const cv::Point2d point((p * m.y - q * n.y) / sine, (q * n.x - p * m.x) / sine);
            if (!isNearPicture(point, size_))
                continue;
            Crossing one = crossingOn(i, point), other = crossingOn(k, point);
            one.possible = other.possible =
                search_ == Search::page || (startsAt(i, one.t) && startsAt(k, other.t));
            crossings_[i * lines_.size() + k] = one;
            crossings_[k * lines_.size() + i] = other;
        }
    }
}

QuadFinder::Crossing QuadFinder::crossingOn(size_t i, const cv::Point2d& point) const
{
    const double t = line(i).positionOf(point);
    const double covered = line(i).isBorder() ? quadRating::borderCoverage * t : line(i).coveredBefore(t);
    return {static_cast<float>(t), static_cast<float>(covered)};
}

// Among many lines most crossings lie where no edge is; without them there are few outlines to try.
bool QuadFinder::startsAt(size_t i, double t) const
{
    const double near = 3, far = 19, least = 0.5;
    return line(i).isBorder() || line(i).coveredBetween(t + near, t + far) >= least ||
           line(i).coveredBetween(t - far, t - near) >= least;
}

/// Share that follows an edge, between the crossings of a line with two others.
double QuadFinder::coverageOf(size_t i, size_t from, size_t to) const
{
    const Crossing &a = crossing(i, from), &b = crossing(i, to);
    return std::abs(a.covered - b.covered) / std::max(1.0F, std::abs(a.t - b.t));
}

bool QuadFinder::isFollowed(size_t i, size_t from, size_t to) const
{
    const Crossing &a = crossing(i, from), &b = crossing(i, to); // without the division of coverageOf
    return std::abs(a.covered - b.covered) >= quadRating::leastCoverage * std::max(1.0F, std::abs(a.t - b.t));
}

// Walks a, b, c, d round the four lines; a is the lowest index and b below d, so each set comes up once.
void QuadFinder::tryQuads()
{
    tries_ = 0;
    const size_t n = lines_.size();
    for (size_t c = 1; c < n; ++c) {
        for (size_t a = 0; a < c; ++a) {
            if (std::abs(line(a).normal().dot(line(c).normal())) < 0.85)
                continue;
            rungs_.clear();
            for (size_t b = a + 1; b < n; ++b) {
                if (b != c && crossing(a, b).possible && crossing(c, b).possible && isFollowed(b, a, c))
                    rungs_.push_back(b);
            }
            tryRungs(a, c);
        }
    }
}

void QuadFinder::tryRungs(size_t a, size_t c)
{
    for (size_t k = 1; k < rungs_.size() && tries_ < mostTries; ++k) {
        for (size_t i = 0; i < k; ++i) {
            const size_t b = rungs_[i], d = rungs_[k];
            if (isFollowed(a, b, d) && isFollowed(c, b, d))
                tryQuad(a, b, c, d);
        }
    }
}

void QuadFinder::tryQuad(size_t a, size_t b, size_t c, size_t d)
{
    const std::array<size_t, 4> order{a, b, c, d};
    Quad quad;
    int borders = 0;
    for (size_t i = 0; i < 4; ++i) {
        // Side i lies on line i and runs from its meeting with the line before to that with the line after.
        const size_t before = order[(i + 3) % 4], here = order[i], after = order[(i + 1) % 4];
        quad.corners[i] = line(here).at(crossing(here, before).t);
        quad.sides[i] = {lines_[here], crossing(here, before).t, crossing(here, after).t};
        borders += line(here).isBorder() ? 1 : 0;
    }
    if (borders > 1)
        return;
    if (cross(quad.corners[1] - quad.corners[0], quad.corners[2] - quad.corners[1]) < 0) {
        // Walk the other way round.
        std::swap(quad.corners[1], quad.corners[3]);
        std::swap(quad.sides[0], quad.sides[3]);
        std::swap(quad.sides[1], quad.sides[2]);
        for (Side& side : quad.sides)
            std::swap(side.from, side.to);
    }
    if (!shapeIsPossible(quad.corners, std::max(size_.width, size_.height)))
        return;
    quad.area = areaOf(quad.corners) / size_.area();
    if (quad.area < leastArea)
        return;
    ++tries_;
    if (!canBeKept(order, quad.area))
        return;
    quadRating::rate(quad, search_);
    if (map_)
        quad.score *= unseenWorth + (1 - unseenWorth) * map_->glanceAt(quad.corners);
    if (quad.score > 0)
        keep(quad);
}

/// False when even perfect corners and contrast would not make it as good as those that are kept.
bool QuadFinder::canBeKept(const std::array<size_t, 4>& order, double area) const
{
    if (best_.size() < (search_ == Search::page ? mostOutlines : mostSheets))
        return true;
    double covered = 0, leastCovered = 1;
    for (size_t i = 0; i < 4; ++i) {
        const double share = coverageOf(order[i], order[(i + 3) % 4], order[(i + 1) % 4]);
        covered += share / 4;
        leastCovered = std::min(leastCovered, share);
    }
    return quadRating::mostScore(covered, leastCovered, area) > best_.back().score;
}

void QuadFinder::keep(const Quad& quad)
{
    const size_t most = search_ == Search::page ? mostOutlines : mostSheets;
    if (best_.size() == most && best_.back().score >= quad.score)
        return;
    if ((search_ == Search::sheets && quad.confidence < leastSheet) || dropsRivals(quad))
        return;
    const auto better = [](const Quad& a, const Quad& b) { return a.score > b.score; };
    best_.insert(std::upper_bound(best_.begin(), best_.end(), quad, better), quad);
    if (best_.size() > most)
        best_.pop_back();
}

/// Of outlines that hardly differ one is enough, or those of one sheet would crowd out the others. Drops the
/// worse ones. @return true when `quad` itself is the worse one
bool QuadFinder::dropsRivals(const Quad& quad)
{
    const auto isSame = [&](const Quad& other) {
        return isRotationOf(other.corners, quad.corners, sameOutline);
    };
    const auto rival = std::find_if(best_.begin(), best_.end(), isSame);
    if (rival != best_.end() && rival->score >= quad.score)
        return true;
    best_.erase(std::remove_if(best_.begin(), best_.end(), isSame), best_.end());
    return false;
}

} // namespace mirvak
