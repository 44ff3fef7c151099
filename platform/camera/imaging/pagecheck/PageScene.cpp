#include "PageScene.h"

#include "BlockGrid.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace mirvak {

namespace {

constexpr float darkness = 10;        // levels, added: the colour of the dark is noise
constexpr float sameTone = 0.13F;     // 13 % in each channel: uneven light over a desk
constexpr float sameHue = 0.08F;      // 8 % between two channels
constexpr float otherLight = 0.4F;    // 65 % lighter
constexpr float sameEnergy = 3;       // factor between two blocks of one material
constexpr double leastContent = 0.02; // of the picture: a card
constexpr double fewAliens = 0.02;    // of the blocks
constexpr int borderBlocks = 2;       // 40 mm of an A3 field
constexpr int leastSkin = 3;          // blocks
constexpr double mostSkin = 0.3;      // of the picture: a larger thing is no hand
constexpr double skinOfArm = 0.2;     // the rest is sleeve and shadow
constexpr double mostArm = 0.4;       // of the picture

bool alike(const cv::Vec3f& a, const cv::Vec3f& b)
{
    return std::abs(a[0] - b[0]) < sameTone && std::abs(a[1] - b[1]) < sameTone &&
           std::abs(a[2] - b[2]) < sameTone;
}

// Another colour, or far lighter or darker than flicker and a passing shadow make it.
bool recoloured(const cv::Vec3f& a, const cv::Vec3f& b)
{
    const cv::Vec3f d = a - b;
    return std::abs(d[0] - d[1]) > sameHue || std::abs(d[1] - d[2]) > sameHue || std::abs(d[1]) > otherLight;
}

cv::Vec3f toneOf(const cv::Vec3f& colour)
{
    return {std::log(colour[0] + darkness), std::log(colour[1] + darkness), std::log(colour[2] + darkness)};
}

float nth(std::vector<float>& values, double share)
{
    const auto place = values.begin() + static_cast<long>(share * static_cast<double>(values.size() - 1));
    std::nth_element(values.begin(), place, values.end());
    return *place;
}

} // namespace

bool PageScene::showsSomething(const PageLook& look)
{
    const size_t count = look.colours().size();
    now_.resize(count);
    double area = 0;
    for (size_t i = 0; i < count; ++i) {
        now_[i] = {toneOf(look.colours()[i]), look.energies()[i]};
        area += now_[i].energy < PageLook::plainEnergy ? 0 : look.block(static_cast<int>(i)).area();
    }
    return area >= leastContent * look.size().area() && !isOneMaterial();
}

bool PageScene::isOneMaterial()
{
    Sight middle;
    for (int c = 0; c < 4; ++c) {
        values_.clear();
        for (const Sight& sight : now_)
            values_.push_back(c < 3 ? sight.tone[c] : sight.energy);
        (c < 3 ? middle.tone[c] : middle.energy) = nth(values_, 0.5);
    }
    const auto alien = std::count_if(
        now_.begin(), now_.end(), [&](const Sight& sight) { return !sameSight(sight, middle); });
    return alien < fewAliens * static_cast<double>(now_.size());
}

bool PageScene::sameSight(const Sight& a, const Sight& b)
{
    const float high = std::max(a.energy, b.energy), low = std::min(a.energy, b.energy);
    return alike(a.tone, b.tone) && (high < PageLook::plainEnergy || high < sameEnergy * low);
}

PageScene::Judgement PageScene::judge(const PageLook& now, const PageLook& page, const LookMatch& match)
{
    takeGain(now, page, match);
    findDesk(match, now.grid());
    findSkin(now);
    dropThinSkin(now.grid());
    growFromSkin(now.grid());

    const size_t count = now_.size();
    int skin = 0, arm = 0;
    double newArea = 0, beyondHand = 0;
    for (size_t i = 0; i < count; ++i) {
        skin += reach_[i] && skin_[i] ? 1 : 0;
        arm += reach_[i];
        if (match.blocks()[i] != LookMatch::Block::changed || desk_[i] ||
            now_[i].energy < PageLook::plainEnergy)
            continue;
        const double area = now.block(static_cast<int>(i)).area();
        newArea += area;
        beyondHand += reach_[i] ? 0 : area;
    }
    Judgement judgement;
    judgement.hand = skin >= leastSkin && skin < mostSkin * static_cast<double>(count);
    const bool handAlone =
        judgement.hand && skin >= skinOfArm * arm && arm < mostArm * static_cast<double>(count);
    judgement.newShare = (handAlone ? beyondHand : newArea) / std::max(now.size().area(), 1);
    return judgement;
}

// The camera's exposure and white balance: the middle one of the changes of colour where nothing else has
// changed.
void PageScene::takeGain(const PageLook& now, const PageLook& page, const LookMatch& match)
{
    const size_t count = now.colours().size();
    now_.resize(count);
    page_.resize(count);
    for (size_t i = 0; i < count; ++i) {
        now_[i] = {toneOf(now.colours()[i]), now.energies()[i]};
        page_[i] = {toneOf(page.colours()[i]), page.energies()[i]};
    }
    cv::Vec3f gain;
    for (int c = 0; c < 3; ++c) {
        values_.clear();
        for (size_t i = 0; i < count; ++i)
            if (match.blocks()[i] == LookMatch::Block::same || match.blocks()[i] == LookMatch::Block::blank)
                values_.push_back(now_[i].tone[c] - page_[i].tone[c]);
        gain[c] = values_.empty() ? 0 : nth(values_, 0.5);
    }
    for (Sight& sight : now_)
        sight.tone -= gain;
}

// A changed block is the bare desk when it looks like a part of the picture that has not changed, and not
// like what lay there.
void PageScene::findDesk(const LookMatch& match, cv::Size grid)
{
    const size_t count = now_.size();
    other_.assign(count, 0);
    desk_.assign(count, 0);
    for (size_t i = 0; i < count; ++i)
        other_[i] = match.blocks()[i] == LookMatch::Block::changed || recoloured(now_[i].tone, page_[i].tone);
    takeOutside(grid);
    for (size_t i = 0; i < count; ++i) {
        if (!other_[i] || sameSight(now_[i], page_[i]))
            continue;
        desk_[i] = std::any_of(
            outside_.begin(), outside_.end(), [&](size_t other) { return sameSight(now_[i], now_[other]); });
    }
}

// The desk shows along the picture's border. What lies next to what has changed is left out: that may be an
// edge of the same page.
void PageScene::takeOutside(cv::Size grid)
{
    outside_.clear();
    const auto keep = [&](auto wanted) {
        for (int i = 0; i < grid.area(); ++i)
            if (!other_[static_cast<size_t>(i)] && wanted(i))
                outside_.push_back(static_cast<size_t>(i));
    };
    keep([&](int i) { return distanceToBorder(i, grid) < borderBlocks && !touchesOther(i, grid); });
    if (outside_.empty())
        keep([](int) { return true; });
}

bool PageScene::touchesOther(int block, cv::Size grid) const
{
    bool touches = false;
    forEachAround(block, grid, [&](size_t at) { touches = touches || other_[at]; });
    return touches;
}

// Against the lightest thing in sight, which is paper, skin of every kind is darker, redder and less blue.
void PageScene::findSkin(const PageLook& now)
{
    cv::Vec3f white;
    for (int c = 0; c < 3; ++c) {
        values_.clear();
        for (const PageLook::Colour& colour : now.colours())
            values_.push_back(colour[c]);
        white[c] = std::max(nth(values_, 0.95), 1.0F);
    }
    skin_.assign(now_.size(), 0);
    for (size_t i = 0; i < now_.size(); ++i) {
        const PageLook::Colour& colour = now.colours()[i];
        const float r = colour[0] / white[0], g = colour[1] / white[1], b = colour[2] / white[2];
        const bool like =
            r > 0.15F && g < 0.9F && r > 1.1F * g && r < 2.2F * g && g > 0.98F * b && r > 1.2F * b;
        skin_[i] = like && !desk_[i] && recoloured(now_[i].tone, page_[i].tone);
    }
}

// The edge of paper on wood has the colour of skin, too, where both share a block; but a hand is more than
// one block wide.
void PageScene::dropThinSkin(cv::Size grid)
{
    wide_.assign(skin_.size(), 0);
    for (int i = 0; i + grid.width + 1 < grid.area(); ++i) {
        if (i % grid.width == grid.width - 1)
            continue;
        const std::array<size_t, 4> square{static_cast<size_t>(i),
                                           static_cast<size_t>(i + 1),
                                           static_cast<size_t>(i + grid.width),
                                           static_cast<size_t>(i + grid.width + 1)};
        if (std::all_of(square.begin(), square.end(), [&](size_t at) { return skin_[at] != 0; }))
            for (const size_t at : square)
                wide_[at] = 1;
    }
    std::swap(skin_, wide_);
}

// Whatever looks other than before and hangs together with skin, if it comes in over the picture's border.
void PageScene::growFromSkin(cv::Size grid)
{
    reach_.assign(now_.size(), 0);
    for (int start = 0; start < grid.area(); ++start) {
        if (!skin_[static_cast<size_t>(start)] || reach_[static_cast<size_t>(start)])
            continue;
        queue_.assign(1, static_cast<size_t>(start));
        reach_[static_cast<size_t>(start)] = 1;
        bool border = false;
        for (size_t next = 0; next < queue_.size(); ++next) {
            const auto block = static_cast<int>(queue_[next]);
            border = border || distanceToBorder(block, grid) == 0;
            forEachAround(block, grid, [&](size_t at) {
                if (!other_[at] || reach_[at])
                    return;
                reach_[at] = 1;
                queue_.push_back(at);
            });
        }
        if (!border)
            for (const size_t at : queue_)
                reach_[at] = 0;
    }
}

} // namespace mirvak
