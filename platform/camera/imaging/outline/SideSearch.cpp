#include "SideSearch.h"

#include "PageAspect.h"
#include "QuadFinder.h"

#include <algorithm>
#include <optional>

namespace mirvak {

namespace {

using Corners = std::array<cv::Point2d, 4>;

constexpr double shortest = 0.4, longest = 1.7; // of the neighbours' length
constexpr double mostSkew = 0.12;               // of the opposite side: how much farther one end may lie
constexpr double step = 4;                      // pixels; snapSide() does the rest
constexpr int samples = 16;
constexpr double strongest = 1.5; // thresholds: print counts no more than the edge of paper
constexpr double apart = 8;       // pixels at one of the ends
constexpr size_t mostMoved = 3;
constexpr int fromBorder = 2;

/// The two neighbours of a side, both from the opposite side on.
struct Rails
{
    Rails(const Corners& corners, size_t side)
        : first(corners[(side + 3) % 4]), second(corners[(side + 2) % 4]), firstEnd(corners[side]),
          secondEnd(corners[(side + 1) % 4])
    {
    }
    Corners with(size_t side, const cv::Point2d& from, const cv::Point2d& to) const
    {
        Corners corners;
        corners[side] = from;
        corners[(side + 1) % 4] = to;
        corners[(side + 2) % 4] = second;
        corners[(side + 3) % 4] = first;
        return corners;
    }
    cv::Point2d first, second, firstEnd, secondEnd;
};

struct Found
{
    float change;
    cv::Point2d from, to;
};

bool isNear(const Found& one, const cv::Point2d& from, const cv::Point2d& to)
{
    return cv::norm(one.from - from) < apart && cv::norm(one.to - to) < apart;
}

/// All places where the side may lie.
std::vector<Found> tryAll(const EdgeField& edges, const Rails& rails)
{
    const cv::Rect2d seen(fromBorder,
                          fromBorder,
                          edges.size().width - 1 - 2 * fromBorder,
                          edges.size().height - 1 - 2 * fromBorder);
    const double length = cv::norm(rails.firstEnd - rails.first);
    const cv::Point2d onFirst = (rails.firstEnd - rails.first) / length,
                      onSecond = (rails.secondEnd - rails.second) / length;
    const double skew = mostSkew * cv::norm(rails.first - rails.second);
    const auto most = static_cast<float>(strongest * edges.threshold());
    std::vector<Found> found;
    const int places = static_cast<int>((longest - shortest) * length / step),
              slants = static_cast<int>(2 * skew / step);
    for (int i = 0; i <= places; ++i) {
        const double t = shortest * length + i * step;
        const cv::Point2d from = rails.first + onFirst * t;
        if (!seen.contains(from))
            continue;
        for (int k = 0; k <= slants; ++k) {
            const cv::Point2d to = rails.second + onSecond * (t - skew + k * step);
            if (seen.contains(to))
                found.push_back({edges.changeAlong(from, to, samples, most), from, to});
        }
    }
    return found;
}

/// A pinhole camera that looks at the middle of the picture.
class Camera
{
public:
    explicit Camera(const cv::Size& picture)
        : middle_(0.5 * (picture.width - 1), 0.5 * (picture.height - 1)),
          focal_(usualFocal * std::max(picture.width, picture.height))
    {
    }
    cv::Vec3d rayTo(const cv::Point2d& point) const
    {
        return {(point.x - middle_.x) / focal_, (point.y - middle_.y) / focal_, 1};
    }
    cv::Point2d seen(const cv::Vec3d& place) const
    {
        return cv::Point2d(place[0], place[1]) * (focal_ / place[2]) + middle_;
    }

private:
    cv::Point2d middle_;
    double focal_;
};

/// The plane of a sheet that is known by three sides: from the first corner, whose distance is 1.
struct Plane
{
    cv::Vec3d corner, away,
        across; ///< `away`: of length 1, along the neighbours; `across`: the whole opposite side
};

// The neighbours are parallel on the sheet: planes through them and the eye meet in their direction. The
// opposite side is at right angles to it, in the plane through itself and the eye.
std::optional<Plane> planeOf(const Rails& rails, const Camera& camera)
{
    constexpr double least = 1e-9;
    const cv::Vec3d first = camera.rayTo(rails.first), second = camera.rayTo(rails.second);
    const cv::Vec3d meeting =
        first.cross(camera.rayTo(rails.firstEnd)).cross(second.cross(camera.rayTo(rails.secondEnd)));
    const cv::Vec3d across = first.cross(second).cross(meeting);
    const cv::Vec3d turned = across.cross(second);
    if (cv::norm(meeting) < least || cv::norm(turned) < least)
        return std::nullopt;
    Plane plane{first, meeting / cv::norm(meeting), {}};
    plane.across = across * (-first.cross(second).dot(turned) / turned.dot(turned));
    const cv::Point2d ahead = camera.seen(first + 1e-3 * plane.away) - rails.first;
    if (ahead.dot(rails.firstEnd - rails.first) < 0)
        plane.away = -plane.away;
    return plane;
}

} // namespace

std::vector<Corners> withSideOnEdges(const EdgeField& edges, const Corners& corners, size_t side)
{
    const Rails rails(corners, side);
    std::vector<Found> found = tryAll(edges, rails);
    const auto leave = [&](const cv::Point2d& from, const cv::Point2d& to) {
        const auto isSame = [&](const Found& one) { return isNear(one, from, to); };
        found.erase(std::remove_if(found.begin(), found.end(), isSame), found.end());
    };
    leave(rails.firstEnd, rails.secondEnd);
    std::vector<Corners> moved;
    while (!found.empty() && moved.size() < mostMoved) {
        const Found best = *std::max_element(
            found.begin(), found.end(), [](const Found& a, const Found& b) { return a.change < b.change; });
        moved.push_back(snapSide(edges, rails.with(side, best.from, best.to), side));
        leave(best.from, best.to);
    }
    return moved;
}

std::vector<Corners> withSideByFormat(const cv::Size& picture, const Corners& corners, size_t side)
{
    const Rails rails(corners, side);
    const Camera camera(picture);
    const std::optional<Plane> plane = planeOf(rails, camera);
    std::vector<Corners> closed;
    if (!plane)
        return closed;
    const cv::Rect2d seen(0, 0, picture.width - 1, picture.height - 1);
    const double length = cv::norm(rails.firstEnd - rails.first);
    for (const double proportion : usualProportions) {
        for (const double height : {proportion, 1 / proportion}) {
            const cv::Vec3d from = plane->corner + plane->away * (height * cv::norm(plane->across));
            const cv::Vec3d to = from + plane->across;
            if (from[2] <= 0 || to[2] <= 0 || !seen.contains(camera.seen(from)) ||
                !seen.contains(camera.seen(to)))
                continue;
            const double share = cv::norm(camera.seen(from) - rails.first) / length;
            if (share > shortest && share < 1.5 * longest)
                closed.push_back(rails.with(side, camera.seen(from), camera.seen(to)));
        }
    }
    return closed;
}

} // namespace mirvak
