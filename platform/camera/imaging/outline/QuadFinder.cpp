#include "QuadFinder.h"

#include <algorithm>
#include <cmath>

namespace mirvak {

namespace {

constexpr double outsideShare = 0.02;    // of the picture: a corner may lie that far outside
constexpr double leastSide = 0.055;      // of the longer side of the picture: an identity card on A3
constexpr double longestToShortest = 12; // a receipt
constexpr double leastArea = 0.008;
constexpr size_t mostOutlines = 12, mostSheets = 200;
constexpr double leastSheet = 0.5; // confidence worth keeping among many
constexpr double sameOutline = 6;  // pixels between corners
constexpr double leastCutOffArea =
    0.15; // of a page that runs out of the picture: smaller things do at any desk
constexpr double leastCoverage = 0.4;
constexpr double borderCoverage = 0.5; // of a side that lies outside the picture and cannot be seen

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

double areaOf(const std::array<cv::Point2d, 4>& p)
{
    return 0.5 * std::abs(cross(p[2] - p[0], p[3] - p[1]));
}

/// How well one side follows an edge; the ends are those at its first and second corner.
struct SideFit
{
    Stretch whole;
    double firstEnd = 0, secondEnd = 0, overrun = 0;
};

// The edge of a page ends at its corners; that of a desk, a table's ruling or another sheet runs on.
double overrunOf(const EdgeLine& line, double from, double to, QuadFinder::Search search)
{
    const bool alone = search == QuadFinder::Search::page;
    const double reach = alone ? std::clamp(0.2 * (to - from), 10.0, 40.0) : 5, gap = alone ? 4 : 1;
    const auto covered = [&](double a, double b) {
        a = std::max(a, line.tBegin());
        b = std::min(b, line.tEnd());
        return b - a < 0.5 * reach ? 0.0 : line.coveredBetween(a, b);
    };
    return 0.5 * (covered(from - gap - reach, from - gap) + covered(to + gap, to + gap + reach));
}

SideFit fitOf(const QuadFinder::Side& side, QuadFinder::Search search)
{
    SideFit fit;
    if (side.line->isBorder()) {
        fit.whole.covered = borderCoverage;
        fit.firstEnd = fit.secondEnd = 1;
        return fit;
    }
    const double from = std::min(side.from, side.to), to = std::max(side.from, side.to);
    // Rounded corners and the picture's border hide the very end.
    const double skip = 3, end = std::max(12.0, 0.12 * (to - from));
    const auto clipped = [&](double a, double b) {
        return side.line->coveredBetween(std::max(a, side.line->tBegin()), std::min(b, side.line->tEnd()));
    };
    fit.whole = side.line->between(from, to);
    fit.firstEnd = clipped(from + skip, from + end);
    fit.secondEnd = clipped(to - end, to - skip);
    if (side.from > side.to)
        std::swap(fit.firstEnd, fit.secondEnd);
    fit.overrun = overrunOf(*side.line, from, to, search);
    return fit;
}

// How much the page differs from what lies around it, over the sides that can be seen: 0 to 1.
double contrastOf(QuadFinder::Quad& quad, const std::array<SideFit, 4>& fits)
{
    double clear = 0, leastClear = 1, steady = 0, leastSteady = 1;
    int inwards = 0, seen = 0;
    for (size_t i = 0; i < 4; ++i) {
        if (quad.sides[i].line->isBorder())
            continue;
        const Stretch& whole = fits[i].whole;
        clear += whole.clear;
        leastClear = std::min(leastClear, whole.clear);
        steady += whole.steady;
        leastSteady = std::min(leastSteady, whole.steady);
        // Walking clockwise, the line's own direction tells on which hand its normal points.
        const bool normalInside = quad.sides[i].to < quad.sides[i].from;
        inwards += (whole.rise > 0) == normalInside ? 1 : -1;
        ++seen;
    }
    const double contrast = 0.3 * clear / seen + 0.15 * leastClear +
                            0.3 * std::min(1.0, 1.4 * steady / seen) +
                            0.25 * std::min(1.0, 2.5 * leastSteady);
    // Pages are brighter than desks. A sheet that is darker all around may be a cover, or a box on a page;
    // one that is now the one and now the other is mostly put together from different things.
    quad.darker = inwards == -seen;
    const double likely = inwards == seen ? 1 : quad.darker ? 0.85 : 0.8;
    return likely * std::clamp((contrast - (inwards == seen ? 0.35 : 0.45)) / 0.4, 0.0, 1.0);
}

void rate(QuadFinder::Quad& quad, QuadFinder::Search search)
{
    std::array<SideFit, 4> fits;
    double covered = 0, least = 1, overrun = 0, corners = 0;
    for (size_t i = 0; i < 4; ++i) {
        fits[i] = fitOf(quad.sides[i], search);
        if (fits[i].whole.covered < leastCoverage)
            return;
        covered += fits[i].whole.covered;
        least = std::min(least, fits[i].whole.covered);
        overrun += fits[i].overrun;
    }
    for (size_t i = 0; i < 4; ++i)
        corners += std::min(fits[(i + 3) % 4].secondEnd, fits[i].firstEnd);
    const double edges = 0.4 * covered / 4 + 0.25 * least + 0.35 * corners / 4 - 0.5 * overrun / 4;
    quad.confidence = std::clamp(edges, 0.0, 1.0) * contrastOf(quad, fits);
    const bool cutOff = std::any_of(quad.sides.begin(), quad.sides.end(), [](const QuadFinder::Side& side) {
        return side.line->isBorder();
    });
    if (cutOff && quad.area < leastCutOffArea)
        return;
    quad.score = quad.confidence * (1 + 0.5 * std::sqrt(quad.area));
}

} // namespace

const std::vector<Outline>&
QuadFinder::find(const std::vector<EdgeLine>& lines, const cv::Size& size, Search search)
{
    size_ = size;
    search_ = search;
    best_.clear();
    collectLines(lines);
    findCorners();
    tryQuads();
    outlines_.clear();
    for (const Quad& quad : best_)
        outlines_.push_back({quad.corners, quad.confidence});
    return outlines_;
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

void QuadFinder::findCorners()
{
    const double marginX = outsideShare * size_.width, marginY = outsideShare * size_.height;
    corners_.assign(lines_.size() * lines_.size(), Corner());
    for (size_t i = 0; i < lines_.size(); ++i) {
        for (size_t k = i + 1; k < lines_.size(); ++k) {
            const cv::Point2d& n = line(i).normal();
            const cv::Point2d& m = line(k).normal();
            const double sine = cross(n, m);
            if (std::abs(sine) < 0.76) // 50 degrees
                continue;
            const double p = line(i).offset(), q = line(k).offset();
            Corner found;
            found.point = {(p * m.y - q * n.y) / sine, (q * n.x - p * m.x) / sine};
            found.possible = found.point.x >= -marginX && found.point.x <= size_.width - 1 + marginX &&
                             found.point.y >= -marginY && found.point.y <= size_.height - 1 + marginY;
            found.t[0] = line(i).positionOf(found.point);
            found.t[1] = line(k).positionOf(found.point);
            if (search_ == Search::sheets)
                found.possible = found.possible && startsAt(i, found.t[0]) && startsAt(k, found.t[1]);
            corners_[i * lines_.size() + k] = found;
            corners_[k * lines_.size() + i] = found;
        }
    }
}

// Among many lines most crossings lie where no edge is; without them there are few outlines to try.
bool QuadFinder::startsAt(size_t i, double t) const
{
    const double near = 3, far = 19, least = 0.5;
    return line(i).isBorder() || line(i).coveredBetween(t + near, t + far) >= least ||
           line(i).coveredBetween(t - far, t - near) >= least;
}

double QuadFinder::positionOn(size_t line, size_t other) const
{
    return corner(line, other).t[line < other ? 0 : 1];
}

// Walks a, b, c, d round the four lines; a is the lowest index and b below d, so each set comes up once.
void QuadFinder::tryQuads()
{
    const size_t n = lines_.size();
    for (size_t a = 0; a < n; ++a) {
        for (size_t c = a + 1; c < n; ++c) {
            if (std::abs(line(a).normal().dot(line(c).normal())) < 0.85)
                continue;
            for (size_t b = a + 1; b < n; ++b) {
                if (b == c || !corner(a, b).possible || !corner(c, b).possible)
                    continue;
                for (size_t d = b + 1; d < n; ++d) {
                    if (d != c && corner(a, d).possible && corner(c, d).possible)
                        tryQuad(a, b, c, d);
                }
            }
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
        quad.corners[i] = corner(before, here).point;
        quad.sides[i] = {lines_[here], positionOn(here, before), positionOn(here, after)};
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
    rate(quad, search_);
    if (quad.score > 0)
        keep(quad);
}

void QuadFinder::keep(const Quad& quad)
{
    const size_t most = search_ == Search::page ? mostOutlines : mostSheets;
    if (best_.size() == most && best_.back().score >= quad.score)
        return;
    if (search_ == Search::sheets && (quad.confidence < leastSheet || dropsRivals(quad)))
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
