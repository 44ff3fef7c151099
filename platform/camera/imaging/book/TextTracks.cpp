#include "TextTracks.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace mirvak {

namespace {

constexpr size_t leastChain = 5;
constexpr double widestGap = 3.0; // letter heights, between letters of one line
constexpr double steepestLink = 0.45;

double middleOf(const Letter& letter)
{
    return 0.5 * (letter.top() + letter.bottom());
}

// The cheapest letter beside each one, or -1.
std::vector<int> nextOf(const Letters& letters, double lean, bool toRight)
{
    const auto& all = letters.all;
    const int count = static_cast<int>(all.size());
    std::vector<int> next(all.size(), -1);
    const double reach = (widestGap + 4) * letters.height;
    for (int i = 0; i < count; ++i) {
        const Letter& a = all[static_cast<size_t>(i)];
        double cheapest = 1e9;
        for (int j = i + (toRight ? 1 : -1); j >= 0 && j < count; j += toRight ? 1 : -1) {
            const Letter& b = all[static_cast<size_t>(j)];
            const double across = std::abs(b.centre() - a.centre());
            if (across > reach)
                break;
            const double gap = across - 0.5 * (a.box.width + b.box.width);
            if (gap > widestGap * letters.height || gap < -0.5 * letters.height)
                continue;
            const double signedAcross = b.centre() - a.centre();
            // Feet or heads: one of them lies level with the neighbour's.
            const double feet = std::abs(b.bottom() - a.bottom() - lean * signedAcross);
            const double heads = std::abs(b.top() - a.top() - lean * signedAcross);
            const double off = std::min(feet, heads);
            if (off > 0.35 * letters.height + steepestLink * across ||
                std::abs(middleOf(b) - middleOf(a) - lean * signedAcross) >
                    0.8 * letters.height + steepestLink * std::max(0.0, gap))
                continue;
            const double cost = across + 3 * off;
            if (cost < cheapest) {
                cheapest = cost;
                next[static_cast<size_t>(i)] = j;
            }
        }
    }
    return next;
}

} // namespace

bool isOnRight(const CylinderModel& model, const cv::Point2d& frame)
{
    const cv::Point2d above = model.toFrame({0, -0.3}, true), below = model.toFrame({0, 0.3}, true);
    return (frame - above).cross(below - above) > 0;
}

std::vector<Chain> chainLetters(const Letters& letters, double lean)
{
    const std::vector<int> right = nextOf(letters, lean, true), left = nextOf(letters, lean, false);
    std::vector<Chain> chains;
    const auto isLinked = [&](int i) {
        return i >= 0 && right[static_cast<size_t>(i)] >= 0 &&
               left[static_cast<size_t>(right[static_cast<size_t>(i)])] == i;
    };
    for (int i = 0; i < static_cast<int>(letters.all.size()); ++i) {
        if (isLinked(left[static_cast<size_t>(i)]) &&
            right[static_cast<size_t>(left[static_cast<size_t>(i)])] == i)
            continue; // not the first of its chain
        Chain chain{letters.all[static_cast<size_t>(i)]};
        for (int at = i; isLinked(at);) {
            at = right[static_cast<size_t>(at)];
            chain.push_back(letters.all[static_cast<size_t>(at)]);
        }
        if (chain.size() >= leastChain)
            chains.push_back(std::move(chain));
    }
    return chains;
}

bool runsDown(const Letters& letters)
{
    int across = 0, down = 0;
    const double reach = 4 * letters.height;
    for (size_t i = 0; i < letters.all.size(); i += 1 + letters.all.size() / 600) {
        const Letter& a = letters.all[i];
        double beside = reach, below = reach;
        for (size_t j = i + 1; j < letters.all.size() && letters.all[j].centre() - a.centre() < reach; ++j) {
            const cv::Rect &p = a.box, &q = letters.all[j].box;
            const double dx = std::max(0, std::max(q.x - p.x - p.width, p.x - q.x - q.width));
            const double dy = std::max(0, std::max(q.y - p.y - p.height, p.y - q.y - q.height));
            const bool sameRow = std::min(p.y + p.height, q.y + q.height) - std::max(p.y, q.y) >
                                 0.4 * std::min(p.height, q.height);
            const bool sameColumn = std::min(p.x + p.width, q.x + q.width) - std::max(p.x, q.x) >
                                    0.4 * std::min(p.width, q.width);
            if (sameRow)
                beside = std::min(beside, dx);
            if (sameColumn)
                below = std::min(below, dy);
        }
        across += beside < below;
        down += below < beside;
    }
    return down > 1.5 * across;
}

std::vector<Track>
tracksOf(const std::vector<Chain>& chains, const BookLook& look, const CylinderModel& model, bool isSpread)
{
    std::vector<Track> tracks;
    for (const Chain& chain : chains) {
        std::array<Track, 4> parts; // feet left, feet right, heads left, heads right
        for (const Letter& letter : chain) {
            const cv::Point2d feet = look.toFrame({letter.centre(), letter.bottom()});
            const cv::Point2d heads = look.toFrame({letter.centre(), letter.top()});
            const size_t side = isSpread ? isOnRight(model, feet) : 1;
            parts[side].points.push_back(feet);
            parts[2 + side].points.push_back(heads);
        }
        for (size_t i = 0; i < parts.size(); ++i) {
            if (parts[i].points.size() < leastChain)
                continue;
            parts[i].isRight = i % 2;
            tracks.push_back(std::move(parts[i]));
        }
    }
    return tracks;
}

std::vector<Track>
marginsOf(const std::vector<Chain>& chains, const BookLook& look, const CylinderModel& model, bool isSpread)
{
    struct End
    {
        double s;
        cv::Point2d frame;
    };
    std::vector<Track> margins;
    for (const int kind : {0, 1, 2, 3}) { // begins and ends, of the left and the right page
        const bool isRight = kind % 2, isBegin = kind < 2;
        std::vector<End> ends;
        double height = 0;
        for (const Chain& chain : chains) {
            const Letter& letter = isBegin ? chain.front() : chain.back();
            const double x = isBegin ? letter.box.x - 0.5 : letter.box.x + letter.box.width - 0.5;
            const cv::Point2d frame = look.toFrame({x, middleOf(letter)});
            if ((isSpread ? isOnRight(model, frame) : true) != isRight)
                continue;
            ends.push_back({model.toFlat(frame, isRight).x, frame});
            height += letter.box.height / look.side() / model.focal;
        }
        if (ends.size() < 5)
            continue;
        height /= static_cast<double>(ends.size());
        std::sort(ends.begin(), ends.end(), [](const End& a, const End& b) { return a.s < b.s; });
        // The densest window of the breadth of a letter.
        size_t best = 0, bestCount = 0;
        for (size_t i = 0, j = 0; i < ends.size(); ++i) {
            while (j < ends.size() && ends[j].s - ends[i].s < 1.2 * height)
                ++j;
            if (j - i > bestCount) {
                bestCount = j - i;
                best = i;
            }
        }
        if (bestCount < 5 || bestCount < ends.size() / 3)
            continue;
        Track margin;
        margin.isRight = isRight;
        margin.isRuling = true;
        for (size_t i = best; i < best + bestCount; ++i)
            margin.points.push_back(ends[i].frame);
        margins.push_back(std::move(margin));
    }
    return margins;
}

} // namespace mirvak
