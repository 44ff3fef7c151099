#include "SheetMap.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>

namespace mirvak {

namespace {

constexpr double leastSure = 0.45;
constexpr double leastCells = 30; // of a sheet: a card on A3
constexpr size_t mostThings = 2;
constexpr double leastSolidity = 0.8; // share of the hull that is filled, for a thing with straight sides

using Polygon = std::vector<cv::Point2f>;

double cross(const cv::Point2f& a, const cv::Point2f& b)
{
    return static_cast<double>(a.x) * b.y - static_cast<double>(a.y) * b.x;
}

/// What side i would add if its neighbours were drawn out until they meet; `tip` is where.
double areaWithout(const Polygon& hull, size_t i, cv::Point2f& tip)
{
    const size_t n = hull.size();
    const cv::Point2f &a = hull[(i + n - 1) % n], &b = hull[i], &c = hull[(i + 1) % n],
                      &d = hull[(i + 2) % n];
    const cv::Point2f first = b - a, second = c - d;
    const double sine = cross(first, second);
    if (std::abs(sine) <= 1e-3 * cv::norm(first) * cv::norm(second))
        return 1e9;
    const double along = cross(c - b, second) / sine;
    if (along < 0 || cross(c - b, first) / sine < 0) // they meet on the other side
        return 1e9;
    tip = b + first * static_cast<float>(along);
    return 0.5 * std::abs(cross(tip - b, c - b));
}

/// The hull with its least sides drawn out until four are left: nearly the smallest quadrilateral about it.
bool reduceToFour(Polygon& hull)
{
    while (hull.size() > 4) {
        double least = 1e8;
        size_t which = 0;
        cv::Point2f tip, best;
        for (size_t i = 0; i < hull.size(); ++i) {
            const double area = areaWithout(hull, i, tip);
            if (area < least) {
                least = area;
                which = i;
                best = tip;
            }
        }
        if (least >= 1e8)
            return false;
        hull[which] = best;
        hull.erase(hull.begin() + static_cast<ptrdiff_t>((which + 1) % hull.size()));
    }
    return hull.size() == 4;
}

/// @return false when there is nothing with four straight sides
bool fourSidesOf(const std::vector<cv::Point>& cells, double grown, Polygon& hull)
{
    Polygon around;
    const auto half = static_cast<float>(0.5 + grown);
    for (const cv::Point& cell : cells) { // their outer corners
        for (const float x : {-half, half})
            for (const float y : {-half, half})
                around.emplace_back(static_cast<float>(cell.x) + x, static_cast<float>(cell.y) + y);
    }
    cv::convexHull(around, hull, true);
    return cv::contourArea(cells) >= leastSolidity * cv::contourArea(hull) && reduceToFour(hull);
}

} // namespace

std::vector<SheetMap::Corners> SheetMap::quadrilaterals() const
{
    std::vector<Corners> found;
    std::vector<std::vector<cv::Point>> contours;
    Polygon hull;
    for (const double borderPrice : {0.0, 1.0}) {
        const cv::Mat sure = inside_ - borderPrice * border_ > leastSure;
        cv::findContours(sure, contours, cv::RETR_EXTERNAL, cv::CHAIN_APPROX_NONE);
        std::sort(contours.begin(), contours.end(), [](const auto& a, const auto& b) {
            return cv::contourArea(a) > cv::contourArea(b);
        });
        for (size_t i = 0; i < std::min(contours.size(), mostThings); ++i) {
            // Where borders count against it, a cell of them is missing all around.
            if (cv::contourArea(contours[i]) < leastCells || !fourSidesOf(contours[i], borderPrice, hull))
                continue;
            Corners& corners = found.emplace_back();
            for (size_t k = 0; k < 4; ++k)
                corners[k] = {(hull[k].x + 0.5) * cell_ - 0.5, (hull[k].y + 0.5) * cell_ - 0.5};
            if (cross(hull[1] - hull[0], hull[2] - hull[1]) < 0)
                std::swap(corners[1], corners[3]);
        }
    }
    return found;
}

void addFromMap(const SheetMap& map,
                const EdgeField& edges,
                const SheetMap::Planes& planes,
                QuadFinder& quads)
{
    // The map errs by a cell or so.
    const int reach = std::max(4, cvRound(1.5 * map.cell()));
    for (const SheetMap::Corners& shown : map.quadrilaterals())
        quads.add(snapSides(edges, snapSides(edges, shown, reach)), edges, planes);
}

} // namespace mirvak
