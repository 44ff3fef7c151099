#include "PageScene.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace mirvak {

namespace {

constexpr float darkness = 10;       // levels, added: the colour of the dark is noise
constexpr float sameTone = 0.13F;    // 13 % in each channel: uneven light over a desk
constexpr float plainEnergy = 120;   // of slopes; below there is nothing to see
constexpr float sameEnergy = 3;      // factor between two blocks of one material
constexpr double leastContent = 0.02; // of the picture: a card
constexpr double fewAliens = 0.02;    // of the blocks
constexpr int borderBlocks = 2;
constexpr int leastSkin = 3;         // blocks
constexpr double mostSkin = 0.3;     // of the picture: a larger thing is no hand
constexpr double skinOfArm = 0.2;    // the rest is sleeve and shadow

bool alike(const cv::Vec3f& a, const cv::Vec3f& b)
{
    return std::abs(a[0] - b[0]) < sameTone && std::abs(a[1] - b[1]) < sameTone &&
           std::abs(a[2] - b[2]) < sameTone;
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
        area += now_[i].energy < plainEnergy ? 0 : look.block(static_cast<int>(i)).area();
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
    return alike(a.tone, b.tone) && (high < plainEnergy || high < sameEnergy * low);
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
        if (match.blocks()[i] != LookMatch::Block::changed || desk_[i] || now_[i].energy < plainEnergy)
            continue;
        const double area = now.block(static_cast<int>(i)).area();
        newArea += area;
        beyondHand += reach_[i] ? 0 : area;
    }
    Judgement judgement;
    judgement.hand = skin >= leastSkin && skin < mostSkin * static_cast<double>(count);
    const bool handAlone = judgement.hand && skin >= skinOfArm * arm;
    judgement.newShare = (handAlone ? beyondHand : newArea) / std::max(now.size().area(), 1);
    return judgement;
}

// The camera's exposure and white balance: the middle one of the changes of colour where
// nothing else has changed.
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
    foreign_.assign(count, 0);
    desk_.assign(count, 0);
    for (size_t i = 0; i < count; ++i) {
        foreign_[i] = match.blocks()[i] == LookMatch::Block::changed || !alike(now_[i].tone, page_[i].tone);
    }
    takeOutside(grid);
    for (size_t i = 0; i < count; ++i) {
        if (!foreign_[i] || sameSight(now_[i], page_[i]))
            continue;
        desk_[i] = std::any_of(outside_.begin(), outside_.end(), [&](size_t other) {
            return sameSight(now_[i], now_[other]);
        });
        foreign_[i] = desk_[i] ? 0 : 1;
    }
}

// The desk shows along the picture's border. What lies next to what has changed is left out: that may be an
// edge of the same page.
void PageScene::takeOutside(cv::Size grid)
{
    outside_.clear();
    const auto keep = [&](auto wanted) {
        for (int i = 0; i < grid.area(); ++i)
            if (!foreign_[static_cast<size_t>(i)] && wanted(i))
                outside_.push_back(static_cast<size_t>(i));
    };
    keep([&](int i) {
        const int x = i % grid.width, y = i / grid.width;
        const int in = std::min({x, y, grid.width - 1 - x, grid.height - 1 - y});
        return in < borderBlocks && !touchesForeign(i, grid);
    });
    if (outside_.empty())
        keep([](int) { return true; });
}

bool PageScene::touchesForeign(int block, cv::Size grid) const
{
    const int x = block % grid.width, y = block / grid.width;
    for (int ny = std::max(y - 1, 0); ny <= std::min(y + 1, grid.height - 1); ++ny)
        for (int nx = std::max(x - 1, 0); nx <= std::min(x + 1, grid.width - 1); ++nx)
            if (foreign_[static_cast<size_t>(ny * grid.width + nx)])
                return true;
    return false;
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
        skin_[i] = foreign_[i] && !alike(now_[i].tone, page_[i].tone) && r > 0.15F && r > 1.1F * g &&
                   r < 2.2F * g && g > 0.98F * b && r > 1.2F * b && g < 0.9F;
    }
}

// The edge of paper on wood has the colour of skin, too, where both share a block; but a hand is more than one
// block wide.
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

// Whatever is foreign and hangs together with skin, if it comes in over the picture's border.
void PageScene::growFromSkin(cv::Size grid)
{
    reach_.assign(now_.size(), 0);
    for (int start = 0; start < grid.area(); ++start) {
        if (!skin_[static_cast<size_t>(start)] || reach_[static_cast<size_t>(start)])
            continue;
        queue_.assign(1, start);
        reach_[static_cast<size_t>(start)] = 1;
        bool border = false;
        for (size_t next = 0; next < queue_.size(); ++next) {
            const int x = queue_[next] % grid.width, y = queue_[next] / grid.width;
            border = border || x == 0 || y == 0 || x == grid.width - 1 || y == grid.height - 1;
            for (int ny = std::max(y - 1, 0); ny <= std::min(y + 1, grid.height - 1); ++ny) {
                for (int nx = std::max(x - 1, 0); nx <= std::min(x + 1, grid.width - 1); ++nx) {
                    const int neighbour = ny * grid.width + nx;
                    const auto n = static_cast<size_t>(neighbour);
                    if (!foreign_[n] || reach_[n])
                        continue;
                    reach_[n] = 1;
                    queue_.push_back(neighbour);
                }
            }
        }
        if (!border)
            for (const int i : queue_)
                reach_[static_cast<size_t>(i)] = 0;
    }
}

} // namespace mirvak
