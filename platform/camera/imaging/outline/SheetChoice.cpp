#include "SheetChoice.h"

#include "OutlineJudge.h"
#include "QuadCheck.h"
#include "QuadOverlap.h"
#include "SmallLook.h"

#include <algorithm>
#include <cmath>

namespace mirvak {

namespace {

using Corners = std::array<cv::Point2d, 4>;
using Planes = SheetChoice::Planes;
using Quad = SheetChoice::Quad;
using Colour = std::array<int, 3>;

constexpr double mostOverlap = 0.08; // of the smaller one: edges are found to a few pixels
constexpr double leastScore = -2;    // by its colours; alone it would have to be above 0
constexpr double partOfWhole = 0.8;  // of its area: what is larger is the same sheet
constexpr double onSide = 5;         // pixels from the line of a side
constexpr double atCorner = 10;      // pixels: a corner nearer than that is the sheet's own
constexpr double besideEdge = 6;     // pixels from an edge, where its blur has ended
constexpr double justBeside = 3;     // pixels: less than any gap between two sheets
constexpr double facingShare = 0.6;  // of a side, for another sheet to lie along it
constexpr double beyondFold = 28;    // pixels: the shadow of a fold is narrower
constexpr int samplesAlong = 24, gapSamples = 4;
constexpr double gapShare = 0.7;      // of the samples in a gap between sheets, which may be rough or shaded
constexpr double sameShade = 0.05;    // of the brightness, in each colour
constexpr double patternShare = 0.15; // of the samples outside, for a colour to be usual there
constexpr double patternSide = 0.5;   // of the samples inside

double cross(const cv::Point2d& a, const cv::Point2d& b)
{
    return a.x * b.y - a.y * b.x;
}

/// How far inside its sides a point lies; negative outside. Corners are clockwise.
double depthIn(const Corners& corners, const cv::Point2d& point)
{
    double depth = 1e9;
    for (size_t i = 0; i < 4; ++i) {
        const cv::Point2d way = corners[(i + 1) % 4] - corners[i];
        depth = std::min(depth, cross(way, point - corners[i]) / std::max(1.0, cv::norm(way)));
    }
    return depth;
}

cv::Point2d middleOf(const Corners& corners)
{
    return 0.25 * (corners[0] + corners[1] + corners[2] + corners[3]);
}

/// The unit vector across side `i` that points out of the sheet.
cv::Point2d outwards(const Corners& corners, size_t i)
{
    const cv::Point2d way = corners[(i + 1) % 4] - corners[i];
    return cv::Point2d(way.y, -way.x) / std::max(1.0, cv::norm(way));
}

bool overlap(const Corners& a, const Corners& b)
{
    return sharedArea(a, b) > mostOverlap * std::min(areaOf(a), areaOf(b));
}

bool isPartOf(const Quad& part, const Quad& whole)
{
    return part.area < partOfWhole * whole.area &&
           std::all_of(part.corners.begin(), part.corners.end(), [&](const cv::Point2d& corner) {
               return depthIn(whole.corners, corner) > -onSide;
           });
}

// The desk itself, or the desk in a shadow: darker, in the same tint.
bool isDeskLike(const Colour& colour, const Colour& desk)
{
    double least = 1e9, most = 0;
    for (size_t c = 0; c < 3; ++c) {
        const double ratio = (colour[c] + 12.0) / (desk[c] + 12.0);
        least = std::min(least, ratio);
        most = std::max(most, ratio);
    }
    return most < 1.08 && least > 0.4 && most < 1.15 * least;
}

// Colours along a side, that far inside it; outside when negative.
std::vector<Colour> coloursAlong(const Planes& planes, const Corners& corners, size_t side, double inside)
{
    const cv::Point2d way = corners[(side + 1) % 4] - corners[side], out = outwards(corners, side);
    std::vector<Colour> colours;
    Colour colour{};
    for (int i = 0; i < samplesAlong; ++i) {
        if (colourAt(planes, corners[side] + way * ((i + 0.5) / samplesAlong) - out * inside, colour))
            colours.push_back(colour);
    }
    return colours;
}

// Whether beside the side of `part` that leaves side `i` of `whole` at this corner lies the desk that is seen
// outside of `whole`: then `whole` goes on over it to another sheet.
bool deskFollows(const Planes& planes, const Corners& whole, size_t i, const Corners& part, size_t corner)
{
    const cv::Point2d out = outwards(whole, i), along(-out.y, out.x), &at = part[corner];
    const cv::Point2d next = part[(corner + 1) % 4] - at, last = part[(corner + 3) % 4] - at;
    const cv::Point2d way = next.dot(out) < last.dot(out) ? next : last;
    const cv::Point2d away = along * ((at - middleOf(part)).dot(along) > 0 ? 1 : -1);
    const std::vector<Colour> desk = coloursAlong(planes, whole, i, -besideEdge);
    int alike = 0;
    for (int k = 1; k < samplesAlong; k += gapSamples) {
        Colour gap{}; // the mean of some, for a desk may be rough
        for (int n = 0; n < gapSamples; ++n) {
            Colour here{};
            const cv::Point2d from = at + away * (2.5 + 0.5 * n);
            if (!colourAt(planes, from + way * (static_cast<double>(k + n) / samplesAlong), here))
                return false;
            for (size_t c = 0; c < 3; ++c)
                gap[c] += here[c];
        }
        for (int& value : gap)
            value /= gapSamples;
        const auto like = std::count_if(
            desk.begin(), desk.end(), [&](const Colour& colour) { return isDeskLike(gap, colour); });
        alike += like >= patternShare * samplesAlong ? 1 : 0;
    }
    return alike >= gapShare * samplesAlong / gapSamples;
}

// Sheets in a row share their lines; together they look like one sheet, over whose sides the desk shows.
bool goesOnBeyond(const Quad& whole, const Quad& part, const Planes& planes)
{
    for (size_t i = 0; i < 4; ++i) {
        const cv::Point2d& from = whole.corners[i];
        const cv::Point2d& to = whole.corners[(i + 1) % 4];
        const cv::Point2d out = outwards(whole.corners, i);
        for (size_t k = 0; k < 4; ++k) {
            const cv::Point2d& corner = part.corners[k];
            const bool isOnSide = std::abs((corner - from).dot(out)) < onSide;
            if (isOnSide && cv::norm(corner - from) > atCorner && cv::norm(corner - to) > atCorner &&
                deskFollows(planes, whole.corners, i, part.corners, k))
                return true;
        }
    }
    return false;
}

bool joinsSeveral(const Quad& whole, const std::vector<Quad>& quads, const Planes& planes)
{
    return std::any_of(quads.begin(), quads.end(), [&](const Quad& part) {
        return part.confidence >= confidentOutline && isPartOf(part, whole) &&
               goesOnBeyond(whole, part, planes);
    });
}

// Whether another sheet lies along that side.
bool facesSheet(const Corners& corners, size_t side, const std::vector<Quad>& quads)
{
    const cv::Point2d out = outwards(corners, side);
    const cv::Point2d way = corners[(side + 1) % 4] - corners[side];
    return std::any_of(quads.begin(), quads.end(), [&](const Quad& other) {
        if (other.darker || other.confidence < confidentOutline)
            return false;
        int beside = 0;
        for (int i = 0; i < samplesAlong; ++i) {
            const cv::Point2d p = corners[side] + way * ((i + 0.5) / samplesAlong);
            const bool isInside = depthIn(other.corners, p + out * justBeside) > 0;
            beside += isInside && depthIn(other.corners, p - out * besideEdge) < 0 ? 1 : 0;
        }
        return beside >= facingShare * samplesAlong;
    });
}

// The desk that sheets enclose has their edges for its own.
bool isDeskBetween(const Quad& quad, const std::vector<Quad>& quads)
{
    int faced = 0;
    for (size_t i = 0; quad.darker && i < 4; ++i)
        faced += facesSheet(quad.corners, i, quads) ? 1 : 0;
    return faced >= 3;
}

bool isSameColour(const Colour& a, const Colour& b)
{
    for (size_t c = 0; c < 3; ++c) {
        if (std::abs(a[c] - b[c]) > 3 + sameShade * std::max(a[c], b[c]))
            return false;
    }
    return true;
}

// A piece of patterned desk is bounded by lines of its pattern, but on both sides of them lie the same
// colours.
bool isPattern(const Planes& planes, const Corners& corners)
{
    int alike = 0;
    for (size_t i = 0; i < 4; ++i) {
        const std::vector<Colour> inside = coloursAlong(planes, corners, i, besideEdge);
        const std::vector<Colour> outside = coloursAlong(planes, corners, i, -besideEdge);
        const auto isOutsideToo = [&](const Colour& colour) {
            return std::count_if(outside.begin(), outside.end(), [&](const Colour& other) {
                       return isSameColour(colour, other);
                   }) >= patternShare * samplesAlong;
        };
        const auto known = std::count_if(inside.begin(), inside.end(), isOutsideToo);
        alike += known >= patternSide * samplesAlong ? 1 : 0;
    }
    return alike >= 2;
}

bool missesOtherHalf(const Outline& sheet, const std::vector<Outline>& sheets)
{
    for (size_t i = 0; i < 4; ++i) {
        const cv::Point2d middle = 0.5 * (sheet.corners[i] + sheet.corners[(i + 1) % 4]);
        const cv::Point2d beyond = middle + outwards(sheet.corners, i) * beyondFold;
        if (std::any_of(sheets.begin(), sheets.end(), [&](const Outline& other) {
                return depthIn(other.corners, beyond) > 0;
            }))
            return false;
    }
    return true;
}

} // namespace

void SheetChoice::clear()
{
    sheets_.clear();
}

bool SheetChoice::isFree(const Quad& quad) const
{
    return std::none_of(sheets_.begin(), sheets_.end(), [&](const Outline& sheet) {
        return overlap(sheet.corners, quad.corners);
    });
}

bool SheetChoice::isSheet(const Quad& quad, const std::vector<Quad>& quads, const Planes& planes) const
{
    return quad.confidence >= confidentOutline && isFree(quad) && paperReachesBorder(planes, quad.corners) &&
           !isPattern(planes, quad.corners) && !joinsSeveral(quad, quads, planes) &&
           !isDeskBetween(quad, quads);
}

std::vector<Outline> SheetChoice::choose(const std::vector<Quad>& quads,
                                         const EdgeField& edges,
                                         const Planes& planes,
                                         const RegionField& regions)
{
    const size_t before = sheets_.size();
    desk_.learn(planes);
    gatherEvidence(quads, planes, regions, desk_, evidence_);
    for (size_t i = 0; i < quads.size(); ++i) {
        const Quad& quad = quads[i];
        if (OutlineJudge::scoreOf(evidence_[i]) > leastScore && isSheet(quad, quads, planes))
            sheets_.push_back({snapSides(edges, quad.corners), quad.confidence});
    }
    return {sheets_.begin() + static_cast<ptrdiff_t>(before), sheets_.end()};
}

bool SheetChoice::losesPage(const EdgeField& edges, const Planes& planes) const
{
    return std::any_of(sheets_.begin(), sheets_.end(), [&](const Outline& sheet) {
        return isHalfOfSpread(planes, edges, sheet.corners) && missesOtherHalf(sheet, sheets_);
    });
}

} // namespace mirvak
