#include "LookMatch.h"

#include "SlopeMatch.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace mirvak {

namespace {

constexpr double leastEnergy = 120; // of slopes: 4 % of contrast between a pixel's two neighbours
constexpr double overNoise = 5;     // times its energy: what can be compared at all
constexpr double alike = 0.45; // the same block stays above, other words in the same lines below
constexpr double mostBreath = 0.03;
constexpr int fewBlocks = 4;
constexpr int searchRowStep = 2; // the slopes are smooth: every other row tells as much in half the time

// From the middle outwards.
const std::array<cv::Point, 25> nearby{{{0, 0},   {1, 0},   {-1, 0},  {0, 1},   {0, -1},  {1, 1},   {-1, 1},
                                        {1, -1},  {-1, -1}, {2, 0},   {-2, 0},  {0, 2},   {0, -2},  {2, 1},
                                        {2, -1},  {-2, 1},  {-2, -1}, {1, 2},   {-1, 2},  {1, -2},  {-1, -2},
                                        {2, 2},   {-2, 2},  {2, -2},  {-2, -2}}};

cv::Point2d middleOf(const cv::Rect& area)
{
    return {area.x + area.width / 2.0, area.y + area.height / 2.0};
}

double nth(std::vector<double>& values, double share)
{
    const auto place = values.begin() + static_cast<long>(share * static_cast<double>(values.size() - 1));
    std::nth_element(values.begin(), place, values.end());
    return *place;
}

} // namespace

void LookMatch::compare(const PageLook& now, const PageLook& then, double noise, bool followMovement)
{
    takeFloors(now, noise);
    lookAtRest(now, then);
    if (followMovement)
        follow(now, then);
    else
        breathe(now, then);
    sumUp(now);
}

// The sensor's noise is the same everywhere, but in the logarithm it is larger where it is dark.
void LookMatch::takeFloors(const PageLook& now, double noise)
{
    floors_.clear();
    brightness_.clear();
    for (const PageLook::Colour& colour : now.colours()) {
        brightness_.push_back((colour[0] + 2 * colour[1] + colour[2]) / (4 * 255.0) + 0.04);
        floors_.push_back(std::max(leastEnergy, overNoise * noise / (brightness_.back() * brightness_.back())));
    }
}

// A lens in search of its focus makes the picture larger and smaller: what is little near the middle is much
// in the corners.
void LookMatch::breathe(const PageLook& now, const PageLook& then)
{
    Sway sway = mirvak::atRest(now);
    for (int round = 0; round < 3 && std::abs(sway.growth) <= mostBreath; ++round) {
        if (search(now, then, sway) < fewBlocks)
            return;
        steps_.clear();
        for (size_t i = 0; i < blocks_.size(); ++i)
            if (blocks_[i] == Block::same)
                steps_.push_back({middleOf(now.block(static_cast<int>(i))), shifts_[i]});
        fitSway(steps_, 1, sway);
    }
}

// Page and desk may have moved apart, so a second movement is looked for in what the first does not explain.
void LookMatch::follow(const PageLook& now, const PageLook& then)
{
    for (int movement = 0; movement < 2; ++movement) {
        moved_.resize(blocks_.size());
        for (size_t i = 0; i < blocks_.size(); ++i)
            moved_[i] = blocks_[i] == Block::changed ? 1 : 0;
        const auto changed = static_cast<int>(std::count(moved_.begin(), moved_.end(), 1));
        if (changed == 0)
            return;
        Sway sway = findSway(now, then, moved_);
        int found = search(now, then, sway);
        if (found < changed && found >= fewBlocks) { // now that the fine level has its say
            steps_.clear();
            for (size_t i = 0; i < blocks_.size(); ++i)
                if (moved_[i] != 0 && blocks_[i] == Block::same)
                    steps_.push_back({middleOf(now.block(static_cast<int>(i))), shifts_[i]});
            fitSway(steps_, 1, sway);
            found += search(now, then, sway);
        }
        if (found * 4 < changed)
            return;
    }
}

void LookMatch::lookAtRest(const PageLook& now, const PageLook& then)
{
    const int count = now.grid().area();
    blocks_.assign(static_cast<size_t>(count), Block::blank);
    shifts_.assign(static_cast<size_t>(count), {});
    noises_.clear();
    ratios_.clear();
    double energyNow = 0, energyThen = 0;
    for (int i = 0; i < count; ++i) {
        const SlopeSums sums = slopeSums(now.levels()[0], then.levels()[0], now.block(i), {});
        const auto at = static_cast<size_t>(i);
        noises_.push_back(sums.noise() * brightness_[at] * brightness_[at]);
        energyNow += sums.first() * sums.pixels;
        energyThen += sums.second() * sums.pixels;
        if (std::max(sums.first(), sums.second()) < floors_[at])
            continue;
        const bool same = sums.likeness(floors_[at] / 2) >= alike;
        blocks_[at] = same ? Block::same : Block::changed;
        if (same)
            ratios_.push_back(sums.first() / sums.second());
    }
    energyRatio_ = energyThen > 0 ? energyNow / energyThen : 1;
    sharpness_ = ratios_.size() > fewBlocks ? nth(ratios_, 0.5) : 1;
    noise_ = nth(noises_, 0.1);
}

// @return how many of the changed blocks lie unchanged where the sway says, or next to it
int LookMatch::search(const PageLook& now, const PageLook& then, const Sway& sway)
{
    int found = 0;
    for (int i = 0; i < now.grid().area(); ++i) {
        Block& block = blocks_[static_cast<size_t>(i)];
        if (block != Block::changed)
            continue;
        const cv::Rect area = now.block(i);
        const cv::Point2d way = sway.at(middleOf(area));
        for (const cv::Point& step : nearby) {
            const cv::Point shift = cv::Point(cvRound(way.x), cvRound(way.y)) + step;
            const SlopeSums sums = slopeSums(now.levels()[0], then.levels()[0], area, shift, searchRowStep);
            if (sums.likeness(floors_[static_cast<size_t>(i)] / 2) < alike)
                continue;
            block = Block::same;
            shifts_[static_cast<size_t>(i)] = shift;
            ++found;
            break;
        }
    }
    return found;
}

void LookMatch::sumUp(const PageLook& now)
{
    double area = 0;
    for (int i = 0; i < now.grid().area(); ++i)
        if (blocks_[static_cast<size_t>(i)] == Block::changed)
            area += now.block(i).area();
    changedShare_ = area / std::max(now.size().area(), 1);
}

} // namespace mirvak
