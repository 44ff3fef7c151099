#include "QuadFinder.h"

#include "SideContrast.h"

#include <algorithm>
#include <cmath>

namespace mirvak {

namespace {

constexpr double outsideShare = 0.02;    // of the picture: a corner may lie that far outside
constexpr double leastSide = 0.055;      // of the longer side of the picture: an identity card on A3
constexpr double longestToShortest = 12; // a receipt
constexpr double leastArea = 0.008;
constexpr double leastCoverage = 0.4;
constexpr double borderCoverage = 0.6; // of a side that lies outside the picture and cannot be seen
constexpr size_t keptQuads = 16;

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

double areaOf(const std::array<cv::Point2d, 4>& p)
{
    return 0.5 * std::abs(cross(p[2] - p[0], p[3] - p[1]));
}

double coverageOf(const QuadFinder::Side& side)
{
    if (side.line->isBorder())
        return borderCoverage;
    return side.line->coverage(std::min(side.from, side.to), std::max(side.from, side.to));
}

// How far the edge runs on beyond the corners: the edge of a page ends there, that of a desk, a table's
// ruling or another sheet goes on.
double overrunOf(const QuadFinder::Side& side)
{
    if (side.line->isBorder())
        return 0;
    const double from = std::min(side.from, side.to), to = std::max(side.from, side.to);
    const double reach = std::clamp(0.2 * (to - from), 10.0, 40.0), gap = 4;
    const auto covered = [&](double a, double b) {
        a = std::max(a, side.line->tBegin());
        b = std::min(b, side.line->tEnd());
        return b - a < 0.5 * reach ? 0.0 : side.line->coverage(a, b);
    };
    return std::max(covered(from - gap - reach, from - gap), covered(to + gap, to + gap + reach));
}

double scoreOf(const QuadFinder::Quad& quad)
{
    double sum = 0, least = 1, overrun = 0;
    for (const QuadFinder::Side& side : quad.sides) {
        const double coverage = coverageOf(side);
        if (coverage < leastCoverage)
            return 0;
        sum += coverage;
        least = std::min(least, coverage);
        overrun += overrunOf(side);
    }
    return 0.6 * sum / 4 + 0.4 * least - 0.25 * overrun / 4 + 0.2 * std::sqrt(quad.area);
}

} // namespace

std::optional<Outline> QuadFinder::find(const std::vector<EdgeLine>& lines,
                                        const std::array<cv::Mat, 3>& planes)
{
    size_ = planes[0].size();
    collectLines(lines, size_);
    findCorners(size_);
    best_.clear();
    tryQuads();

    std::optional<Outline> found;
    const SideContrast contrast(planes);
    for (const Quad& quad : best_) {
        const double confidence = contrast.confidenceOf(quad);
        if (!found || confidence > found->confidence)
            found = Outline{quad.corners, confidence};
    }
    return found;
}

void QuadFinder::collectLines(const std::vector<EdgeLine>& lines, const cv::Size& size)
{
    lines_ = lines;
    lines_.push_back(EdgeLine::border({1, 0}, 0, size));
    lines_.push_back(EdgeLine::border({1, 0}, size.width - 1, size));
    lines_.push_back(EdgeLine::border({0, 1}, 0, size));
    lines_.push_back(EdgeLine::border({0, 1}, size.height - 1, size));
}

void QuadFinder::findCorners(const cv::Size& size)
{
    const double marginX = outsideShare * size.width, marginY = outsideShare * size.height;
    corners_.assign(lines_.size() * lines_.size(), Corner());
    for (size_t i = 0; i < lines_.size(); ++i) {
        for (size_t k = i + 1; k < lines_.size(); ++k) {
            const cv::Point2d& n = lines_[i].normal();
            const cv::Point2d& m = lines_[k].normal();
            const double sine = cross(n, m);
            if (std::abs(sine) < 0.76) // 50 degrees
                continue;
            const double p = lines_[i].offset(), q = lines_[k].offset();
            Corner found;
            found.point = {(p * m.y - q * n.y) / sine, (q * n.x - p * m.x) / sine};
            found.possible = found.point.x >= -marginX && found.point.x <= size.width - 1 + marginX &&
                             found.point.y >= -marginY && found.point.y <= size.height - 1 + marginY;
            found.t[0] = lines_[i].positionOf(found.point);
            found.t[1] = lines_[k].positionOf(found.point);
            corners_[i * lines_.size() + k] = found;
            corners_[k * lines_.size() + i] = found;
        }
    }
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
            if (std::abs(lines_[a].normal().dot(lines_[c].normal())) < 0.85)
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
        quad.sides[i] = {&lines_[here], positionOn(here, before), positionOn(here, after)};
        borders += lines_[here].isBorder() ? 1 : 0;
    }
    if (borders > 1)
        return;
    if (cross(quad.corners[1] - quad.corners[0], quad.corners[2] - quad.corners[1]) < 0) {
        // Walk the other way round.
        std::swap(quad.corners[1], quad.corners[3]);
        std::swap(quad.sides[0], quad.sides[3]);
        std::swap(quad.sides[1], quad.sides[2]);
    }
    if (!shapeIsPossible(quad.corners, std::max(size_.width, size_.height)))
        return;
    quad.area = areaOf(quad.corners) / size_.area();
    if (quad.area < leastArea)
        return;
    quad.score = scoreOf(quad);
    if (quad.score > 0)
        keep(quad);
}

void QuadFinder::keep(const Quad& quad)
{
    const auto better = [](const Quad& x, const Quad& y) { return x.score > y.score; };
    if (best_.size() == keptQuads && best_.back().score >= quad.score)
        return;
    best_.insert(std::upper_bound(best_.begin(), best_.end(), quad, better), quad);
    if (best_.size() > keptQuads)
        best_.pop_back();
}

} // namespace mirvak
