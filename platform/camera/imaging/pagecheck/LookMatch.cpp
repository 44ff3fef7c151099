#include "LookMatch.h"

#include "BlockGrid.h"
#include "SlopeMatch.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace mirvak {

namespace {

constexpr double overNoise = 5; // times its energy: what can be compared at all
constexpr double alike = 0.45;  // the same block stays above, other words in the same lines below
constexpr int leastApart = 3;   // pixels: two movements, not one and its rounding
constexpr size_t adjacent = 9;  // of them
constexpr double mostBreath = 0.03;
constexpr int fewBlocks = 4;
constexpr int searchRowStep = 2; // the slopes are smooth: every other row tells as much in half the time

// From the middle outwards.
const std::array<cv::Point, 25> nearby{{{0, 0},  {1, 0},   {-1, 0},  {0, 1},  {0, -1}, {1, 1},  {-1, 1},
                                        {1, -1}, {-1, -1}, {2, 0},   {-2, 0}, {0, 2},  {0, -2}, {2, 1},
                                        {2, -1}, {-2, 1},  {-2, -1}, {1, 2},  {-1, 2}, {1, -2}, {-1, -2},
                                        {2, 2},  {-2, 2},  {2, -2},  {-2, -2}}};

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
    if (followMovement) {
        if (follow(now, then))
            spread(now, then);
        findSeams(now.grid());
    } else {
        breathe(now, then);
    }
    sumUp(now);
}

// The sensor's noise is the same everywhere, but in the logarithm it is larger where it is dark.
void LookMatch::takeFloors(const PageLook& now, double noise)
{
    floors_.clear();
    brightness_.clear();
    for (const PageLook::Colour& colour : now.colours()) {
        brightness_.push_back((colour[0] + 2 * colour[1] + colour[2]) / (4 * 255.0) + 0.04);
        floors_.push_back(std::max<double>(PageLook::plainEnergy,
                                           overNoise * noise / (brightness_.back() * brightness_.back())));
    }
}

// A lens in search of its focus makes the picture larger and smaller: what is little near the middle is much
// in the corners.
void LookMatch::breathe(const PageLook& now, const PageLook& then)
{
    Sway sway = noSway(now);
    for (int round = 0; round < 3 && std::abs(sway.growth) <= mostBreath; ++round) {
        if (search(now, then, sway, 20) < fewBlocks)
            return;
        steps_.clear();
        for (size_t i = 0; i < blocks_.size(); ++i)
            if (blocks_[i] == Block::same)
                steps_.push_back({middleOf(now.block(static_cast<int>(i))), shifts_[i]});
        fitSway(steps_, 1, sway);
    }
}

// Page and desk may have moved apart, so a second movement is looked for in what the first does not explain.
// @return whether that explains a good part of the change: else it is another page
bool LookMatch::follow(const PageLook& now, const PageLook& then)
{
    for (int movement = 0; movement < 2; ++movement) {
        moved_.resize(blocks_.size());
        for (size_t i = 0; i < blocks_.size(); ++i)
            moved_[i] = blocks_[i] == Block::changed ? 1 : 0;
        const auto changed = static_cast<int>(std::count(moved_.begin(), moved_.end(), 1));
        if (changed == 0)
            return true;
        Sway sway = findSway(now, then, moved_);
        int found = search(now, then, sway, 6);
        if (found < changed && found >= fewBlocks) { // now that the fine level has its say
            steps_.clear();
            for (size_t i = 0; i < blocks_.size(); ++i)
                if (moved_[i] != 0 && blocks_[i] == Block::same)
                    steps_.push_back({middleOf(now.block(static_cast<int>(i))), shifts_[i]});
            fitSway(steps_, 1, sway);
            found += search(now, then, sway, 6);
        }
        if (found * 4 < changed)
            return movement > 0;
    }
    return true;
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

// A quarter of the blocks, spread over all, shows whether the sway is worth trying on the rest: whether one
// in so many is found.
// @return how many of the changed blocks lie unchanged where the sway says, or next to it
int LookMatch::search(const PageLook& now, const PageLook& then, const Sway& sway, size_t oneIn)
{
    constexpr size_t turns = 4;
    changed_.clear();
    for (size_t i = 0; i < blocks_.size(); ++i)
        if (blocks_[i] == Block::changed)
            changed_.push_back(static_cast<int>(i));
    size_t found = 0, tried = 0;
    for (size_t turn = 0; turn < turns; ++turn) {
        for (size_t i = turn; i < changed_.size(); i += turns, ++tried) {
            const cv::Point2d way = sway.at(middleOf(now.block(changed_[i])));
            found +=
                searchBlock(now, then, changed_[i], {cvRound(way.x), cvRound(way.y)}, nearby.size()) ? 1 : 0;
        }
        if (tried > turns && found * oneIn < tried)
            break;
    }
    return static_cast<int>(found);
}

bool LookMatch::searchBlock(
    const PageLook& now, const PageLook& then, int block, cv::Point around, size_t steps)
{
    const auto at = static_cast<size_t>(block);
    for (size_t i = 0; i < steps; ++i) {
        const cv::Point shift = around + nearby[i];
        const SlopeSums sums =
            slopeSums(now.levels()[0], then.levels()[0], now.block(block), shift, searchRowStep);
        if (sums.likeness(floors_[at] / 2) < alike)
            continue;
        blocks_[at] = Block::same;
        shifts_[at] = shift;
        return true;
    }
    return false;
}

// What no movement of the whole explains may still have moved as the blocks around it did: paper bends.
void LookMatch::spread(const PageLook& now, const PageLook& then)
{
    bool found = true;
    for (int round = 0; found && round < 6; ++round) {
        found = false;
        for (int i = 0; i < now.grid().area(); ++i) {
            if (blocks_[static_cast<size_t>(i)] != Block::changed)
                continue;
            takeShiftsAround(i, now.grid());
            found = std::any_of(
                        shiftsAround_.begin(),
                        shiftsAround_.end(),
                        [&](const cv::Point& shift) { return searchBlock(now, then, i, shift, adjacent); }) ||
                    found;
        }
    }
}

// The movements of the blocks around that are the same, each once.
void LookMatch::takeShiftsAround(int block, cv::Size grid)
{
    shiftsAround_.clear();
    forEachAround(block, grid, [&](size_t at) {
        if (blocks_[at] == Block::same &&
            std::find(shiftsAround_.begin(), shiftsAround_.end(), shifts_[at]) == shiftsAround_.end())
            shiftsAround_.push_back(shifts_[at]);
    });
}

void LookMatch::findSeams(cv::Size grid)
{
    for (int i = 0; i < grid.area(); ++i) {
        if (blocks_[static_cast<size_t>(i)] != Block::changed)
            continue;
        takeShiftsAround(i, grid);
        if (distanceToBorder(i, grid) == 0)
            shiftsAround_.emplace_back(); // the picture's own edge, which stays where it is
        cv::Point least(1000, 1000), most(-1000, -1000);
        for (const cv::Point& shift : shiftsAround_) {
            least = {std::min(least.x, shift.x), std::min(least.y, shift.y)};
            most = {std::max(most.x, shift.x), std::max(most.y, shift.y)};
        }
        if (std::max(most.x - least.x, most.y - least.y) >= leastApart)
            blocks_[static_cast<size_t>(i)] = Block::seam;
    }
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
