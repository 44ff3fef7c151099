#include "Sway.h"

#include "SlopeMatch.h"

#include <algorithm>
#include <cmath>

namespace mirvak {

namespace {

constexpr int side = 16;           // pixels of a block at its own level
constexpr double leastEnergy = 25; // of the coarse slopes, 2 % of contrast
constexpr double leastLikeness = 0.6;
constexpr double repetition = 0.003; // likeness a pixel: of two equals, as in checked cloth, the nearer one

bool liesInMoved(const PageLook& look, const std::vector<unsigned char>& moved, cv::Point2d at)
{
    const cv::Size grid = look.grid();
    const int column = std::min(static_cast<int>(at.x) / PageLook::blockSide, grid.width - 1),
              row = std::min(static_cast<int>(at.y) / PageLook::blockSide, grid.height - 1);
    return moved[static_cast<size_t>(row * grid.width + column)] != 0;
}

constexpr double unknown = -9; // lower than any likeness

// Where the top of a parabola through three values lies, -0.5 to 0.5.
double peak(double before, double here, double after)
{
    if (before <= unknown || after <= unknown)
        return 0;
    const double bend = before - 2 * here + after;
    return bend < 0 ? std::clamp(0.5 * (before - after) / bend, -0.5, 0.5) : 0;
}

class Search
{
public:
    Search(const PageLook& now, const PageLook& then, size_t level, int reach)
        : now_(now.levels()[level]), then_(then.levels()[level]), reach_(reach), across_(2 * reach + 3),
          farther_(repetition * now.levels()[level].scale), scores_(static_cast<size_t>(across_ * across_))
    {
    }
    /// @return the likeness of the best shift, written to `best` with its fraction; pixels of the level
    double run(cv::Rect area, cv::Point around, cv::Point2d& best)
    {
        if (slopeSums(now_, now_, area, {}).first() < leastEnergy)
            return 0;
        std::fill(scores_.begin(), scores_.end(), unknown);
        cv::Point top;
        for (int dy = -reach_; dy <= reach_; ++dy) {
            for (int dx = -reach_; dx <= reach_; ++dx) {
                const cv::Point shift(dx, dy);
                score(shift) = alike(area, around + shift) - farther_ * std::hypot(dx, dy);
                if (score(shift) > score(top))
                    top = shift;
            }
        }
        best = around + top;
        best.x += peak(score(top - cv::Point(1, 0)), score(top), score(top + cv::Point(1, 0)));
        best.y += peak(score(top - cv::Point(0, 1)), score(top), score(top + cv::Point(0, 1)));
        return score(top);
    }

private:
    // With a margin of one around what is searched.
    double& score(cv::Point shift)
    {
        return scores_[static_cast<size_t>((shift.y + reach_ + 1) * across_ + shift.x + reach_ + 1)];
    }
    double alike(cv::Rect area, cv::Point shift) const
    {
        const SlopeSums sums = slopeSums(now_, then_, area, shift);
        if (sums.pixels * 2 < area.area() || sums.first() < leastEnergy || sums.second() < leastEnergy)
            return 0;
        // Both directions in one: here the lines of a text help.
        const double product = static_cast<double>(sums.across[2] + sums.down[2]);
        return product / (sums.pixels * std::sqrt(sums.first() * sums.second()));
    }

    const PageLook::Level& now_;
    const PageLook::Level& then_;
    int reach_, across_;
    double farther_;
    std::vector<double> scores_;
};

double middleOf(std::vector<double>& values)
{
    const auto middle = values.begin() + static_cast<long>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

struct Scan
{
    size_t level;
    int reach;  ///< pixels of the level, each way
    int stride; ///< from block to block
};

// What the moved blocks of a level say, searched for about where the sway already puts them.
void takeSteps(const PageLook& now,
               const PageLook& then,
               const std::vector<unsigned char>& moved,
               const Scan& scan,
               const Sway& sway,
               std::vector<SwayStep>& steps)
{
    const PageLook::Level& slopes = now.levels()[scan.level];
    const double scale = slopes.scale;
    Search search(now, then, scan.level, scan.reach);
    steps.clear();
    for (int y = 0; y + side <= slopes.across.rows; y += scan.stride) {
        for (int x = 0; x + side <= slopes.across.cols; x += scan.stride) {
            const cv::Point2d centre = cv::Point2d(x + side / 2.0, y + side / 2.0) * scale;
            if (!liesInMoved(now, moved, centre))
                continue;
            const cv::Point2d guess = sway.at(centre) / scale;
            cv::Point2d best;
            const double likeness =
                search.run({x, y, side, side}, {cvRound(guess.x), cvRound(guess.y)}, best);
            if (likeness >= leastLikeness)
                steps.push_back({centre, best * scale, likeness * likeness});
        }
    }
}

void fit(const std::vector<SwayStep>& steps, Sway& sway)
{
    double all = 0;
    cv::Point2d at, shift;
    for (const SwayStep& step : steps) {
        all += step.weight;
        at += step.weight * step.at;
        shift += step.weight * step.shift;
    }
    if (all <= 0)
        return;
    at /= all;
    shift /= all;
    // A little stiffness: few blocks close together say nothing about turn and size.
    double square = 2.0 * 60 * 60, outwards = 0, round = 0;
    for (const SwayStep& step : steps) {
        const cv::Point2d p = step.at - at, d = step.shift - shift;
        square += step.weight * p.dot(p);
        outwards += step.weight * p.dot(d);
        round += step.weight * p.cross(d);
    }
    sway.growth = outwards / square;
    sway.turn = round / square;
    sway.shift = {};
    sway.shift = shift - sway.at(at);
}

} // namespace

Sway noSway(const PageLook& look)
{
    Sway sway;
    sway.middle = {look.size().width / 2.0, look.size().height / 2.0};
    return sway;
}

void fitSway(const std::vector<SwayStep>& steps, double tolerance, Sway& sway)
{
    if (steps.empty())
        return;
    std::vector<double> xs, ys;
    for (const SwayStep& step : steps) {
        const cv::Point2d miss = step.shift - sway.at(step.at);
        xs.push_back(miss.x);
        ys.push_back(miss.y);
    }
    sway.shift += cv::Point2d(middleOf(xs), middleOf(ys));
    std::vector<SwayStep> weighted = steps;
    for (int round = 0; round < 6; ++round) {
        for (size_t i = 0; i < steps.size(); ++i) {
            const cv::Point2d miss = steps[i].shift - sway.at(steps[i].at);
            const double share = 1 + miss.dot(miss) / (tolerance * tolerance);
            weighted[i].weight = steps[i].weight / (share * share);
        }
        fit(weighted, sway);
    }
}

Sway findSway(const PageLook& now, const PageLook& then, const std::vector<unsigned char>& moved)
{
    Sway sway = noSway(now);
    std::vector<SwayStep> steps;
    takeSteps(now, then, moved, {2, 5, side / 2}, sway, steps); // of the few coarse blocks every half one
    fitSway(steps, 1.5 * now.levels()[2].scale, sway);
    if (steps.empty())
        return sway;
    takeSteps(now, then, moved, {1, 2, side}, sway, steps);
    fitSway(steps, 1.5 * now.levels()[1].scale, sway);
    return sway;
}

} // namespace mirvak
