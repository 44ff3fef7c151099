#include "TextBlocks.h"

#include <algorithm>
#include <iterator>

namespace mirvak {

namespace {

// In heights of a mark.
constexpr double leastGap = 1.4; // that may lie between rows of one block
constexpr double proseWidth = 11, shortProseWidth = 18;
constexpr double widestPitch = 4.2;   // of running text
constexpr double standingWidth = 2.4; // of a line that runs upward or downward
constexpr double standingGap = 2;     // in it

constexpr double gapOfPitch = 0.75;
constexpr double otherSize = 1.6;             // times as large: a heading over its text
constexpr size_t leastRows = 3, sureRows = 5; // of prose
constexpr double fullRow = 0.72, fullRows = 0.6;
constexpr size_t nearRows = 3;
constexpr size_t standingRows = 8;
constexpr double standingShape = 6, standingShare = 0.6;

int overlap(int from, int to, int otherFrom, int otherTo)
{
    return std::min(to, otherTo) - std::max(from, otherFrom);
}

// Strokes above each other are one letter: an ideograph may be made of flat ones alone.
double letterHeight(const Piece& piece)
{
    std::vector<cv::Rect> marks = piece.marks;
    std::sort(marks.begin(), marks.end(), [](const cv::Rect& a, const cv::Rect& b) { return a.x < b.x; });
    std::vector<int> heights;
    cv::Rect letter;
    for (const cv::Rect& mark : marks) {
        if (!letter.empty() &&
            overlap(letter.x, letter.br().x, mark.x, mark.br().x) * 2 > std::min(letter.width, mark.width)) {
            letter |= mark;
            heights.back() = letter.height;
            continue;
        }
        letter = mark;
        heights.push_back(letter.height);
    }
    const auto middle = heights.begin() + static_cast<std::ptrdiff_t>(heights.size() / 2);
    std::nth_element(heights.begin(), middle, heights.end());
    return *middle;
}

class Stacker
{
public:
    Stacker(std::vector<Piece> pieces, int pitch, int height) : pieces_(std::move(pieces)), height_(height)
    {
        widest_ = std::max(leastGap * height, gapOfPitch * pitch);
        std::sort(pieces_.begin(), pieces_.end(), [](const Piece& a, const Piece& b) {
            return a.box.y + a.box.height / 2 < b.box.y + b.box.height / 2;
        });
    }

    std::vector<TextBlock> run()
    {
        findNeighbours();
        std::vector<TextBlock> blocks;
        std::vector<bool> taken(pieces_.size(), false);
        for (size_t i = 0; i < pieces_.size(); ++i) {
            if (taken[i])
                continue;
            TextBlock block;
            for (size_t at = i;; at = below_[at].front()) {
                taken[at] = true;
                block.box |= pieces_[at].box;
                block.marks += pieces_[at].marks.size();
                block.rows.push_back(pieces_[at]);
                if (!goesOn(at))
                    break;
            }
            blocks.push_back(std::move(block));
        }
        return blocks;
    }

private:
    // Directly below: no other piece lies between.
    void findNeighbours()
    {
        below_.resize(pieces_.size());
        above_.resize(pieces_.size());
        for (size_t i = 0; i < pieces_.size(); ++i) {
            const cv::Rect& box = pieces_[i].box;
            for (size_t j = i + 1; j < pieces_.size(); ++j) {
                const cv::Rect& other = pieces_[j].box;
                if (other.y - box.br().y > widest_ + box.height)
                    continue;
                if (overlap(box.x, box.br().x, other.x, other.br().x) <= 0 ||
                    overlap(box.y, box.br().y, other.y, other.br().y) * 2 >
                        std::min(box.height, other.height) ||
                    other.y - box.br().y > widest_)
                    continue;
                const bool hidden = std::any_of(below_[i].begin(), below_[i].end(), [&](size_t k) {
                    const cv::Rect& between = pieces_[k].box;
                    return overlap(between.x, between.br().x, other.x, other.br().x) > 0 &&
                           other.y + other.height / 2 > between.br().y;
                });
                if (hidden)
                    continue;
                below_[i].push_back(j);
                above_[j].push_back(i);
            }
        }
    }

    bool goesOn(size_t at) const
    {
        if (below_[at].size() != 1 || above_[below_[at].front()].size() != 1)
            return false;
        const double a = letterHeight(pieces_[at]), b = letterHeight(pieces_[below_[at].front()]);
        return std::max(a, b) <= otherSize * std::min(a, b);
    }

    std::vector<Piece> pieces_;
    int height_;
    double widest_ = 0;
    std::vector<std::vector<size_t>> below_, above_;
};

// Lines get shorter together where text runs round a picture.
int widestNear(const TextBlock& block, size_t row)
{
    int widest = 0;
    const size_t end = std::min(block.rows.size(), row + nearRows + 1);
    for (size_t i = row - std::min(row, nearRows); i < end; ++i)
        widest = std::max(widest, block.rows[i].box.width);
    return widest;
}

bool isProse(const TextBlock& block, int height)
{
    const double least = block.rows.size() < sureRows ? shortProseWidth : proseWidth;
    if (block.rows.size() < leastRows || block.box.width < least * height ||
        block.box.height > widestPitch * height * static_cast<double>(block.rows.size()))
        return false;
    size_t full = 0;
    for (size_t i = 0; i < block.rows.size(); ++i)
        full += block.rows[i].box.width >= fullRow * widestNear(block, i);
    // The last row ends anywhere.
    return static_cast<double>(full) >= fullRows * static_cast<double>(block.rows.size() - 1);
}

// Joins what stands below it when that goes on with a line that runs upward or downward.
bool joinStanding(TextBlock& above, const TextBlock& below, int height)
{
    const int over = overlap(above.box.x, above.box.br().x, below.box.x, below.box.br().x);
    if (over * 2 < std::min(above.box.width, below.box.width) ||
        below.box.y - above.box.br().y > standingGap * height ||
        (above.box | below.box).width > standingWidth * height)
        return false;
    above.box |= below.box;
    above.rows.insert(above.rows.end(), below.rows.begin(), below.rows.end());
    above.marks += below.marks;
    return true;
}

// Rows so close that they are letters: those of a column of numbers leave more white than they take.
bool isSideways(const TextBlock& block)
{
    int filled = 0;
    for (const Piece& row : block.rows)
        filled += row.box.height;
    return block.rows.size() >= standingRows && block.box.height > standingShape * block.box.width &&
           filled > standingShare * block.box.height;
}

// A word space or an odd letter may have parted them.
std::vector<TextBlock> withSideways(std::vector<TextBlock> blocks, int height)
{
    std::vector<TextBlock> all, standing;
    std::sort(blocks.begin(), blocks.end(), [](const TextBlock& a, const TextBlock& b) {
        return a.box.y < b.box.y;
    });
    std::vector<std::vector<TextBlock>> parts;
    for (TextBlock& block : blocks) {
        if (block.box.width > standingWidth * height) {
            all.push_back(std::move(block));
            continue;
        }
        size_t at = 0;
        while (at < standing.size() && !joinStanding(standing[at], block, height))
            ++at;
        if (at == standing.size()) {
            standing.push_back(block);
            parts.emplace_back();
        }
        parts[at].push_back(std::move(block));
    }
    for (size_t i = 0; i < standing.size(); ++i) {
        standing[i].isSideways = isSideways(standing[i]);
        if (standing[i].isSideways)
            all.push_back(std::move(standing[i]));
        else
            std::move(parts[i].begin(), parts[i].end(), std::back_inserter(all));
    }
    return all;
}

} // namespace

std::vector<TextBlock> textBlocksOf(const Pieces& pieces, int markHeight)
{
    std::vector<TextBlock> blocks =
        withSideways(Stacker(pieces.all, pieces.pitch, markHeight).run(), markHeight);
    for (TextBlock& block : blocks)
        block.isProse = !block.isSideways && isProse(block, markHeight);
    return blocks;
}

} // namespace mirvak
