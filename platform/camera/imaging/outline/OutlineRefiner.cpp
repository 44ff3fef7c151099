#include "Outline.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace mirvak {

namespace {

constexpr double reducedSide = 640; // of the picture in which outlines are found
constexpr double endShare = 0.03;   // of a side left out at each corner, which may be rounded or bent
constexpr int pixelsPerSample = 8;
constexpr int halfWidth = 2; // pixels along the side that are averaged: noise goes, the edge stays sharp
constexpr double leastInliers = 0.35;

struct Found
{
    cv::Point2d point;
    double strength = 0; ///< levels
};

struct StraightLine
{
    cv::Point2d point, direction;
};

/// Looks across one side of the outline for its edge.
class SideSearch
{
public:
    SideSearch(const cv::Mat& rgb, const cv::Point2d& from, const cv::Point2d& to)
        : rgb_(rgb), from_(from), way_(to - from), length_(std::max(1.0, cv::norm(way_))),
          along_(way_ / length_), across_(-along_.y, along_.x),
          reach_(static_cast<int>(std::clamp(3 * std::max(rgb.cols, rgb.rows) / reducedSide, 5.0, 40.0))),
          profile_(static_cast<size_t>(2 * reach_ + 1))
    {
    }

    std::vector<Found> run()
    {
        const int samples = std::clamp(static_cast<int>(length_) / pixelsPerSample, 24, 240);
        std::vector<Found> found;
        for (int i = 0; i < samples; ++i) {
            const double share = endShare + (1 - 2 * endShare) * (i + 0.5) / samples;
            const Found edge = edgeAt(from_ + way_ * share);
            if (edge.strength > 0)
                found.push_back(edge);
        }
        return found;
    }
    int reach() const { return reach_; }

private:
    cv::Vec3f mean(const cv::Point2d& centre) const
    {
        cv::Vec3f sum(0, 0, 0);
        for (int k = -halfWidth; k <= halfWidth; ++k) {
            const cv::Point2d p = centre + along_ * k;
            const int x = std::clamp(cvRound(p.x), 0, rgb_.cols - 1),
                      y = std::clamp(cvRound(p.y), 0, rgb_.rows - 1);
            sum += cv::Vec3f(rgb_.at<cv::Vec3b>(y, x));
        }
        return sum / (2.0F * halfWidth + 1);
    }

    // The steepest place of the profile, by a parabola through its neighbours.
    Found edgeAt(const cv::Point2d& centre)
    {
        for (int k = -reach_; k <= reach_; ++k)
            profile_[static_cast<size_t>(k + reach_)] = mean(centre + across_ * k);
        slope_.assign(profile_.size(), 0);
        for (size_t i = 2; i + 2 < profile_.size(); ++i) {
            const cv::Vec3f rise = profile_[i + 1] + profile_[i + 2] - profile_[i - 1] - profile_[i - 2];
            const float most = std::max({std::abs(rise[0]), std::abs(rise[1]), std::abs(rise[2])});
            // Of two edges alike, the one where the outline was seen.
            const float away =
                std::abs(static_cast<float>(i) - static_cast<float>(reach_)) / static_cast<float>(reach_);
            slope_[i] = most * (1 - 0.4F * away * away);
        }
        const auto top = std::max_element(slope_.begin(), slope_.end());
        const auto at = static_cast<size_t>(top - slope_.begin());
        if (*top < 6 || at < 2 || at + 2 >= slope_.size())
            return {};
        const double bend = slope_[at - 1] - 2.0 * slope_[at] + slope_[at + 1];
        const double shift = bend < 0 ? 0.5 * (slope_[at - 1] - slope_[at + 1]) / bend : 0;
        return {centre + across_ * (static_cast<double>(at) - reach_ + shift), *top};
    }

    const cv::Mat& rgb_;
    cv::Point2d from_, way_;
    double length_;
    cv::Point2d along_, across_;
    int reach_;
    std::vector<cv::Vec3f> profile_;
    std::vector<float> slope_;
};

double distance(const StraightLine& line, const cv::Point2d& p)
{
    const cv::Point2d d = p - line.point;
    return std::abs(d.x * line.direction.y - d.y * line.direction.x);
}

StraightLine through(const cv::Point2d& a, const cv::Point2d& b)
{
    const cv::Point2d d = b - a;
    return {a, d / std::max(1e-9, cv::norm(d))};
}

StraightLine leastSquares(const std::vector<Found>& found, const StraightLine& guess, double tolerance)
{
    cv::Point2d mean(0, 0);
    int used = 0;
    for (const Found& f : found) {
        if (distance(guess, f.point) <= tolerance) {
            mean += f.point;
            ++used;
        }
    }
    if (used < 2)
        return guess;
    mean /= static_cast<double>(used);
    double xx = 0, xy = 0, yy = 0;
    for (const Found& f : found) {
        const cv::Point2d d = f.point - mean;
        if (distance(guess, f.point) > tolerance)
            continue;
        xx += d.x * d.x;
        xy += d.x * d.y;
        yy += d.y * d.y;
    }
    const double angle = 0.5 * std::atan2(2 * xy, xx - yy);
    return {mean, {std::cos(angle), std::sin(angle)}};
}

// Tries lines through pairs of points far from each other and keeps the one that most points agree with
// (Fischler and Bolles 1981, with all pairs of a fixed pattern in place of random ones).
StraightLine fitLine(const std::vector<Found>& found, const StraightLine& fallback, double tolerance)
{
    const size_t n = found.size(), step = std::max<size_t>(1, n / 24);
    size_t best = 0;
    StraightLine line = fallback;
    for (size_t i = 0; i + n / 3 < n; i += step) {
        for (size_t k = i + n / 3; k < n; k += step) {
            const StraightLine candidate = through(found[i].point, found[k].point);
            const auto agreeing =
                static_cast<size_t>(std::count_if(found.begin(), found.end(), [&](const Found& f) {
                    return distance(candidate, f.point) <= tolerance;
                }));
            if (agreeing > best) {
                best = agreeing;
                line = candidate;
            }
        }
    }
    if (best < leastInliers * static_cast<double>(n))
        return fallback;
    return leastSquares(found, leastSquares(found, line, tolerance), tolerance);
}

bool meet(const StraightLine& a, const StraightLine& b, cv::Point2d& point)
{
    const double sine = a.direction.x * b.direction.y - a.direction.y * b.direction.x;
    if (std::abs(sine) < 0.3)
        return false;
    const cv::Point2d d = b.point - a.point;
    point = a.point + a.direction * ((d.x * b.direction.y - d.y * b.direction.x) / sine);
    return true;
}

} // namespace

Outline refineOutline(const cv::Mat& rgb, const Outline& outline)
{
    std::array<StraightLine, 4> sides;
    double reach = 0;
    for (size_t i = 0; i < 4; ++i) {
        const cv::Point2d& from = outline.corners[i];
        const cv::Point2d& to = outline.corners[(i + 1) % 4];
        SideSearch search(rgb, from, to);
        const std::vector<Found> found = search.run();
        reach = search.reach();
        sides[i] = through(from, to);
        if (found.size() >= 12 && !liesOnBorder(from, to, rgb.size(), 0.4 * reach))
            sides[i] = fitLine(found, sides[i], std::max(1.5, 0.2 * reach));
    }
    Outline refined = outline;
    for (size_t i = 0; i < 4; ++i) {
        cv::Point2d corner;
        // A corner that jumps away was not refined but lost.
        if (meet(sides[(i + 3) % 4], sides[i], corner) && cv::norm(corner - outline.corners[i]) <= 3 * reach)
            refined.corners[i] = corner;
    }
    return refined;
}

} // namespace mirvak
