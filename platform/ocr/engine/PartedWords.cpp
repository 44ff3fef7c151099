#include "PartedWords.h"

#include "Boxes.h"

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <optional>

namespace mirvak {

namespace {

constexpr double acrossEdge = 1; // heights of a mark, that a word sticks out of its area
constexpr double sameLevel =
    0.5; // of a mark or the lower one of two words: between the middles of a line's words
constexpr double mostBeside = 0.3; // of the narrower one's width, that neighbours share

/// The lines of one area, put together of pieces.
class Rows
{
public:
    explicit Rows(int markHeight) : height_(markHeight) {}

    void add(ReadLine piece)
    {
        const auto row = std::find_if(
            rows_.begin(), rows_.end(), [&](const ReadLine& other) { return goesOn(other, piece); });
        if (row == rows_.end()) {
            rows_.push_back(std::move(piece));
            return;
        }
        row->words.insert(row->words.end(), piece.words.begin(), piece.words.end());
        std::stable_sort(row->words.begin(), row->words.end(), [](const ReadWord& a, const ReadWord& b) {
            return a.box.left < b.box.left;
        });
        row->box = boxAround(row->words);
    }

    ReadBlock take()
    {
        sortFromTheTop(rows_);
        return std::move(rows_);
    }

private:
    // Beside the row's words or between them, on the level of the nearest one: a row may bend.
    bool goesOn(const ReadLine& row, const ReadLine& piece) const
    {
        const Box* nearest[] = {&row.words.front().box, &piece.words.front().box};
        int most = std::numeric_limits<int>::min();
        for (const ReadWord& own : row.words) {
            for (const ReadWord& other : piece.words) {
                const int over = shared(own.box.left, own.box.right, other.box.left, other.box.right);
                if (over > mostBeside * std::min(own.box.width(), other.box.width()))
                    return false;
                if (over > most) {
                    most = over;
                    nearest[0] = &own.box;
                    nearest[1] = &other.box;
                }
            }
        }
        const Box &a = *nearest[0], &b = *nearest[1];
        const int down = std::abs(a.top + a.bottom - b.top - b.bottom) / 2;
        return down < sameLevel * std::max(height_, std::min(a.height(), b.height()));
    }

    int height_;
    ReadBlock rows_;
};

/// The area in which a word lies; of several, the one with whose letters it has most in common.
std::optional<size_t> areaOf(const cv::Rect& word, const std::vector<TextArea>& areas, int markHeight)
{
    std::optional<size_t> best;
    int least = 0;
    for (size_t i = 0; i < areas.size(); ++i) {
        if (!areas[i].box.contains((word.tl() + word.br()) / 2))
            continue;
        int foreign = 0;
        for (const cv::Rect& mark : areas[i].foreign)
            foreign += (mark & word).area();
        if (!best || foreign < least) {
            best = i;
            least = foreign;
        }
    }
    const bool isAcross = best && word.width - (word & areas[*best].box).width > acrossEdge * markHeight;
    return isAcross ? std::nullopt : best;
}

// The middle of its usual word, doubled: a bracket or a stroke may reach far up or down.
int levelOf(const ReadLine& line)
{
    std::vector<int> middles;
    for (const ReadWord& word : line.words)
        middles.push_back(word.box.top + word.box.bottom);
    const auto middle = middles.begin() + static_cast<std::ptrdiff_t>(middles.size() / 2);
    std::nth_element(middles.begin(), middle, middles.end());
    return *middle;
}

} // namespace

void sortFromTheTop(ReadBlock& lines)
{
    std::stable_sort(lines.begin(), lines.end(), [](const ReadLine& a, const ReadLine& b) {
        return levelOf(a) < levelOf(b);
    });
}

std::vector<ReadBlock> partWords(const ReadBlock& lines, const std::vector<TextArea>& areas, int markHeight)
{
    std::vector<Rows> rows(areas.size(), Rows(markHeight));
    for (const ReadLine& line : lines) {
        std::vector<ReadLine> pieces(areas.size());
        for (const ReadWord& word : line.words) {
            if (const std::optional<size_t> area = areaOf(rectOf(word.box), areas, markHeight))
                pieces[*area].words.push_back(word);
        }
        for (size_t i = 0; i < areas.size(); ++i) {
            if (pieces[i].words.empty())
                continue;
            pieces[i].box = boxAround(pieces[i].words);
            rows[i].add(std::move(pieces[i]));
        }
    }
    std::vector<ReadBlock> blocks;
    blocks.reserve(rows.size());
    for (Rows& own : rows)
        blocks.push_back(own.take());
    return blocks;
}

} // namespace mirvak
