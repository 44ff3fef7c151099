#include "PageLook.h"

#include <algorithm>
#include <cmath>

namespace mirvak {

namespace {

using Byte = unsigned char;

constexpr int brightest = 4 * 255; // red + 2 green + blue
constexpr int toneScale = 256;     // per factor e of brightness
constexpr double darkness = 40;    // 10 levels: what is darker is noise and no contrast

const std::array<short, brightest + 1>& toneTable()
{
    static const auto table = [] {
        std::array<short, brightest + 1> tones{};
        for (size_t i = 0; i < tones.size(); ++i)
            tones[i] = static_cast<short>(
                std::lround(toneScale * std::log((static_cast<double>(i) + darkness) / darkness)));
        return tones;
    }();
    return table;
}

void takeTones(const std::array<cv::Mat, 3>& planes, cv::Mat& tone)
{
    const auto& table = toneTable();
    tone.create(planes[0].size(), CV_16SC1);
    for (int y = 0; y < tone.rows; ++y) {
        const Byte* r = planes[0].ptr(y);
        const Byte* g = planes[1].ptr(y);
        const Byte* b = planes[2].ptr(y);
        short* out = tone.ptr<short>(y);
        for (int x = 0; x < tone.cols; ++x)
            out[x] = table[static_cast<size_t>(r[x] + 2 * g[x] + b[x])];
    }
}

void shrink(const cv::Mat& from, int factor, cv::Mat& to)
{
    to.create(std::max(from.rows / factor, 1), std::max(from.cols / factor, 1), CV_16SC1);
    const int high = std::min(factor, from.rows), wide = std::min(factor, from.cols);
    for (int y = 0; y < to.rows; ++y) {
        short* out = to.ptr<short>(y);
        for (int x = 0; x < to.cols; ++x) {
            int sum = 0;
            for (int j = 0; j < high; ++j) {
                const short* in = from.ptr<short>(y * factor + j) + x * factor;
                for (int i = 0; i < wide; ++i)
                    sum += in[i];
            }
            out[x] = static_cast<short>(sum / (high * wide));
        }
    }
}

// Slopes smoothed across their direction (Sobel's operators), a quarter of the sum: at most 840, so that the
// squares of a whole block fit into 32 bits.
void takeSlopes(const cv::Mat& tone, std::vector<short>& row, PageLook::Level& level)
{
    const int w = tone.cols, h = tone.rows;
    level.across.create(h, w, CV_16SC1);
    level.down.create(h, w, CV_16SC1);
    row.resize(2 * static_cast<size_t>(w));
    short* smooth = row.data();
    short* slope = row.data() + w;
    for (int y = 0; y < h; ++y) {
        const short* above = tone.ptr<short>(std::max(y - 1, 0));
        const short* here = tone.ptr<short>(y);
        const short* below = tone.ptr<short>(std::min(y + 1, h - 1));
        for (int x = 0; x < w; ++x) {
            smooth[x] = static_cast<short>(above[x] + 2 * here[x] + below[x]);
            slope[x] = static_cast<short>(below[x] - above[x]);
        }
        short* across = level.across.ptr<short>(y);
        short* down = level.down.ptr<short>(y);
        for (int x = 1; x < w - 1; ++x) {
            across[x] = static_cast<short>((smooth[x + 1] - smooth[x - 1]) / 4);
            down[x] = static_cast<short>((slope[x - 1] + 2 * slope[x] + slope[x + 1]) / 4);
        }
        across[0] = across[w - 1] = down[0] = down[w - 1] = 0;
    }
}

int blocksAlong(int pixels)
{
    return std::max((pixels + PageLook::blockSide / 2) / PageLook::blockSide, 1);
}

} // namespace

void PageLook::build(const Reduction& reduction)
{
    takeTones(reduction.planes(), tone_);
    shrink(tone_, 4, quarter_);
    shrink(quarter_, 2, eighth_);
    const std::array<const cv::Mat*, 3> tones{&tone_, &quarter_, &eighth_};
    for (size_t i = 0; i < tones.size(); ++i) {
        takeSlopes(*tones[i], row_, levels_[i]);
        levels_[i].scale = i == 0 ? 1 : 2 << i;
    }
    grid_ = {blocksAlong(tone_.cols), blocksAlong(tone_.rows)};
    takeColours(reduction);
    takeEnergies();
}

void PageLook::takeColours(const Reduction& reduction)
{
    colours_.resize(static_cast<size_t>(grid_.area()));
    for (int i = 0; i < grid_.area(); ++i) {
        const cv::Rect area = block(i);
        Colour& colour = colours_[static_cast<size_t>(i)];
        for (int c = 0; c < 3; ++c) {
            unsigned sum = 0;
            for (int y = area.y; y < area.br().y; ++y) {
                const Byte* values = reduction.planes()[static_cast<size_t>(c)].ptr(y) + area.x;
                for (int x = 0; x < area.width; ++x)
                    sum += values[x];
            }
            colour[c] = static_cast<float>(sum) / static_cast<float>(area.area());
        }
    }
}

void PageLook::takeEnergies()
{
    energies_.resize(colours_.size());
    for (int i = 0; i < grid_.area(); ++i) {
        const cv::Rect area = block(i);
        int sum = 0;
        for (int y = area.y; y < area.br().y; ++y) {
            const short* across = levels_[0].across.ptr<short>(y) + area.x;
            const short* down = levels_[0].down.ptr<short>(y) + area.x;
            for (int x = 0; x < area.width; ++x)
                sum += (across[x] * across[x] + down[x] * down[x]) / 2; // two halves fit into 32 bits
        }
        energies_[static_cast<size_t>(i)] = 2 * static_cast<float>(sum) / static_cast<float>(area.area());
    }
}

void PageLook::clear()
{
    for (Level& level : levels_) {
        level.across.release();
        level.down.release();
    }
    colours_.clear();
    energies_.clear();
    grid_ = {};
}

void PageLook::copyFrom(const PageLook& other)
{
    for (size_t i = 0; i < levels_.size(); ++i) {
        other.levels_[i].across.copyTo(levels_[i].across);
        other.levels_[i].down.copyTo(levels_[i].down);
        levels_[i].scale = other.levels_[i].scale;
    }
    colours_ = other.colours_;
    energies_ = other.energies_;
    grid_ = other.grid_;
}

cv::Rect PageLook::block(int index) const
{
    const int column = index % grid_.width, row = index / grid_.width;
    const int left = column * blockSide, top = row * blockSide;
    // What is left over at the right and the bottom belongs to the last block or is one of its own.
    const int right = column + 1 == grid_.width ? size().width : left + blockSide;
    const int bottom = row + 1 == grid_.height ? size().height : top + blockSide;
    return {left, top, right - left, bottom - top};
}

} // namespace mirvak
