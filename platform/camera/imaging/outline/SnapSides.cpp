#include "LineFit.h"
#include "QuadFinder.h"

#include <algorithm>
#include <cmath>

namespace mirvak {

namespace {

constexpr float mostChange = 45; // levels: print beside the edge counts no more than the edge
constexpr int centroid = 2;      // pixels about the best line that place it between pixels

struct Straight
{
    cv::Point2d point, direction;
};

/// One side with the colour changes around it.
class SideProfile
{
public:
    /// `reach`: pixels either way.
    SideProfile(const EdgeField& field, const cv::Point2d& from, const cv::Point2d& to, int reach)
        : from_(from), way_(to - from), reach_(reach)
    {
        const double length = std::max(1.0, cv::norm(way_));
        across_ = {-way_.y / length, way_.x / length};
        // The farther it looks, the more lines it has to try: along them fewer samples do.
        const int samples = std::max(8, static_cast<int>(2 * length / reach_));
        changes_.resize(static_cast<size_t>(samples) * static_cast<size_t>(width()));
        for (int i = 0; i < samples; ++i) {
            const cv::Point2d p = from_ + way_ * ((i + 0.5) / samples);
            for (int k = -reach_; k <= reach_; ++k)
                changes_[static_cast<size_t>(i * width() + k + reach_)] =
                    std::min(mostChange, field.changeAcross(p + across_ * k, across_));
        }
    }

    /// Every second line first: an edge is some pixels wide. Then those about the best.
    Straight best() const
    {
        Ends best;
        float most = sumAlong(best) * 1.02F; // moving has to pay
        const auto tryAbout = [&](const Ends& middle, int reach, int step) {
            for (int first = -reach; first <= reach; first += step) {
                for (int second = -reach; second <= reach; second += step) {
                    const Ends ends{std::clamp(middle.first + first, -reach_, reach_),
                                    std::clamp(middle.second + second, -reach_, reach_)};
                    const float sum = sumAlong(ends);
                    if (sum > most) {
                        most = sum;
                        best = ends;
                    }
                }
            }
        };
        tryAbout({}, reach_ / 2 * 2, 2);
        tryAbout(Ends(best), 1, 1);
        return between(best);
    }

private:
    struct Ends
    {
        int first = 0, second = 0; ///< pixels across the side
    };
    int width() const { return 2 * reach_ + 1; }
    size_t samples() const { return changes_.size() / static_cast<size_t>(width()); }
    const float* changesAt(size_t sample) const { return &changes_[sample * static_cast<size_t>(width())]; }
    double shareOf(size_t sample) const
    {
        return (static_cast<double>(sample) + 0.5) / static_cast<double>(samples());
    }

    float sumAlong(const Ends& ends) const
    {
        const auto step = static_cast<float>(ends.second - ends.first) / static_cast<float>(samples());
        float sum = 0,
              column = static_cast<float>(ends.first + reach_) + 0.5F * step + 0.5F; // rounded by cutting
        for (size_t i = 0; i < samples(); ++i) {
            sum += changesAt(i)[static_cast<size_t>(column)];
            column += step;
        }
        return sum;
    }

    // Weighted regression of the centre of the change in each sample over its place on the side.
    Straight between(const Ends& ends) const
    {
        LineFit fit;
        for (size_t i = 0; i < samples(); ++i) {
            const double share = shareOf(i);
            const auto middle =
                static_cast<int>(std::lround(ends.first + (ends.second - ends.first) * share));
            for (int k = std::max(-reach_, middle - centroid); k <= std::min(reach_, middle + centroid);
                 ++k) {
                const double change = changesAt(i)[k + reach_];
                fit.add(share, k, change * change);
            }
        }
        const LineFit::Line tried{static_cast<double>(ends.first),
                                  static_cast<double>(ends.second - ends.first)};
        const auto [start, rise] = fit.line().value_or(tried);
        return {from_ + across_ * start, way_ + across_ * rise};
    }

    cv::Point2d from_, way_, across_;
    int reach_;
    std::vector<float> changes_; ///< across the side, sample by sample
};

Straight sideOf(const std::array<cv::Point2d, 4>& corners, size_t side)
{
    return {corners[side], corners[(side + 1) % 4] - corners[side]};
}

// Where the page runs out of the picture there is no edge to snap to.
Straight snapped(const EdgeField& field, const std::array<cv::Point2d, 4>& corners, size_t side, int reach)
{
    const cv::Point2d &from = corners[side], &to = corners[(side + 1) % 4];
    const bool seen = !liesOnBorder(from, to, field.size(), 1);
    return seen ? SideProfile(field, from, to, reach).best() : sideOf(corners, side);
}

/// The corners where the sides meet, as far as they lie near those that were.
std::array<cv::Point2d, 4>
meetingsOf(const std::array<Straight, 4>& sides, const std::array<cv::Point2d, 4>& corners, double reach)
{
    std::array<cv::Point2d, 4> meetings = corners;
    for (size_t i = 0; i < 4; ++i) {
        const Straight& a = sides[(i + 3) % 4];
        const Straight& b = sides[i];
        const double sine = a.direction.x * b.direction.y - a.direction.y * b.direction.x;
        const cv::Point2d d = b.point - a.point;
        const double along = (d.x * b.direction.y - d.y * b.direction.x) / sine;
        const cv::Point2d corner = a.point + a.direction * along;
        if (std::isfinite(along) && cv::norm(corner - corners[i]) <= reach)
            meetings[i] = corner;
    }
    return meetings;
}

constexpr int cornerReach = 3; // of what a side may move: at a slant corners move farther

} // namespace

std::array<cv::Point2d, 4>
snapSides(const EdgeField& field, const std::array<cv::Point2d, 4>& corners, int reach)
{
    std::array<Straight, 4> sides;
    for (size_t i = 0; i < 4; ++i)
        sides[i] = snapped(field, corners, i, reach);
    return meetingsOf(sides, corners, cornerReach * reach);
}

std::array<cv::Point2d, 4>
snapSide(const EdgeField& field, const std::array<cv::Point2d, 4>& corners, size_t side, int reach)
{
    std::array<Straight, 4> sides;
    for (size_t i = 0; i < 4; ++i)
        sides[i] = i == side ? snapped(field, corners, i, reach) : sideOf(corners, i);
    return meetingsOf(sides, corners, cornerReach * reach);
}

} // namespace mirvak
