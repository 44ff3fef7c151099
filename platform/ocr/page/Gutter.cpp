#include "Gutter.h"

#include "RunningText.h"

#include <algorithm>
#include <cstdlib>

namespace mirvak {

namespace {

// In heights of a mark.
constexpr double leastGap = 0.9;
constexpr double leastGapOfPitch = 0.4; // of the distance of lines, the smaller one of both sides
constexpr double noteWidth = 4.5;       // narrower are numbers of a list
constexpr double onLevel = 0.45;        // between middles of rows that are one line of a table
constexpr double onLevelOfPitch = 0.2;  // the same in distances of lines: worn letters lie anywhere in theirs
constexpr double addressWidth = 5, addressGap = 4, addressPitch = 5;
constexpr size_t addressLeast = 3, addressMost = 7; // rows

constexpr double proseShare = 0.5; // of the marks of a side
constexpr double notesShare = 0.6; // rows of the notes as a share of those of the text beside them
constexpr double alignedShare = 0.65;
constexpr double tableAligned = 0.85, tableGap = 0.25; // shares of rows, of the narrower side
constexpr double tablePitch = 3;
constexpr size_t leastRows = 3;
constexpr size_t floatRows = 3; // of a caption in a gutter
constexpr double floatShare = 0.1;
constexpr size_t besideMarks = 12; // of text on both sides of one

struct Gap
{
    int from, to;
};

std::vector<Gap> gapsOf(const Blocks& blocks, int height)
{
    std::vector<Gap> spans;
    for (const TextBlock* block : blocks)
        spans.push_back({block->box.x, block->box.br().x});
    std::sort(spans.begin(), spans.end(), [](const Gap& a, const Gap& b) { return a.from < b.from; });
    std::vector<Gap> gaps;
    int end = spans.empty() ? 0 : spans.front().to;
    for (const Gap& span : spans) {
        if (span.from - end >= leastGap * height)
            gaps.push_back({end, span.from});
        end = std::max(end, span.to);
    }
    return gaps;
}

/// What stands on one side of a gap.
struct Side
{
    Blocks blocks;
    cv::Rect box;
    std::vector<int> levels; ///< middles of the lines, px
    int pitch = 0;           ///< px, from row to row
    bool isProse = false;

    Side(Blocks all, int height) : blocks(std::move(all))
    {
        size_t marks = 0, running = 0;
        for (const TextBlock* block : blocks) {
            box |= block->box;
            marks += block->marks;
            running += block->isProse ? block->marks : 0;
        }
        const RunningText text(blocks);
        levels = text.levels();
        pitch = text.pitch();
        isProse =
            static_cast<double>(running) >= proseShare * static_cast<double>(marks) || text.fills(height);
    }
};

// Share of the rows of the side with fewer of them that stand on a level with one of the other.
double alignedRows(const Side& a, const Side& b, int height)
{
    const Side& few = a.levels.size() < b.levels.size() ? a : b;
    const Side& many = &few == &a ? b : a;
    const double near = std::max(onLevel * height, onLevelOfPitch * std::min(a.pitch, b.pitch));
    size_t aligned = 0;
    for (const int level : few.levels) {
        aligned += std::any_of(many.levels.begin(), many.levels.end(), [&](int other) {
            return std::abs(other - level) <= near;
        });
    }
    return static_cast<double>(aligned) / static_cast<double>(few.levels.size());
}

// Lines that begin below each other, close together, of different lengths.
bool isAddress(const Side& side, int height)
{
    if (side.blocks.size() != 1 || side.levels.size() < addressLeast || side.levels.size() > addressMost ||
        side.box.width < addressWidth * height)
        return false;
    int left = 0, right = 0;
    const std::vector<Piece>& rows = side.blocks.front()->rows;
    for (const Piece& row : rows) {
        left = std::max(left, row.box.x - side.box.x);
        right = std::max(right, side.box.br().x - row.box.br().x);
    }
    const double pitch = static_cast<double>(side.levels.back() - side.levels.front()) /
                         static_cast<double>(side.levels.size() - 1);
    return left < height && right > height && pitch < addressPitch * height;
}

bool areAddresses(const Side& left, const Side& right, int height)
{
    return right.box.x - left.box.br().x > addressGap * height && isAddress(left, height) &&
           isAddress(right, height);
}

// Few rows that stand on the text's own lines have at least as much white before them as lies from line to
// line; others are the ends of lines with a wide space.
bool isNotes(const Side& notes, const Side& text, double aligned)
{
    const int gap = std::max(notes.box.x - text.box.br().x, text.box.x - notes.box.br().x);
    return text.isProse && (aligned < alignedShare ||
                            (gap >= text.pitch && static_cast<double>(notes.levels.size()) <=
                                                      notesShare * static_cast<double>(text.levels.size())));
}

// Names below each other fill their column like prose, but their rows stand further apart, on the levels of
// the next column, and that stands well away.
bool isTable(const Side& left, const Side& right, double aligned, int height)
{
    const int gap = right.box.x - left.box.br().x;
    return aligned >= tableAligned && std::min(left.pitch, right.pitch) > tablePitch * height &&
           gap > tableGap * std::min(left.box.width, right.box.width);
}

bool parts(const Side& left, const Side& right, int height)
{
    const double aligned = alignedRows(left, right, height);
    if (areAddresses(left, right, height))
        return true;
    if (left.isProse && right.isProse)
        return !isTable(left, right, aligned, height);
    if (std::min(left.box.width, right.box.width) < noteWidth * height)
        return false;
    if (isNotes(left, right, aligned) || isNotes(right, left, aligned))
        return true;
    return std::min(left.levels.size(), right.levels.size()) >= leastRows && aligned < alignedShare;
}

std::optional<Gutter> widest(const Blocks& blocks, int height)
{
    std::optional<Gutter> best;
    int width = 0;
    for (const Gap& gap : gapsOf(blocks, height)) {
        if (gap.to - gap.from <= width)
            continue;
        Gutter gutter;
        for (const TextBlock* block : blocks)
            (block->box.x < gap.to ? gutter.left : gutter.right).push_back(block);
        const Side left(gutter.left, height), right(gutter.right, height);
        if (gap.to - gap.from < leastGapOfPitch * std::min(left.pitch, right.pitch) ||
            !parts(left, right, height))
            continue;
        width = gap.to - gap.from;
        best = std::move(gutter);
    }
    return best;
}

// Whether rows of the text stand on the level of the box, all of them to its left or all to its right.
bool isBeside(const TextBlock& text, const cv::Rect& box, bool left)
{
    if (text.marks < besideMarks)
        return false;
    bool some = false;
    for (const Piece& row : text.rows) {
        if (row.box.y >= box.br().y || row.box.br().y <= box.y)
            continue;
        if (left ? row.box.br().x > box.x : row.box.x < box.br().x)
            return false;
        some = true;
    }
    return some;
}

// A few rows with text on their left and on their right.
bool isFloat(const TextBlock& block, const Blocks& blocks)
{
    const auto stands = [&](bool left) {
        return std::any_of(blocks.begin(), blocks.end(), [&](const TextBlock* other) {
            return isBeside(*other, block.box, left);
        });
    };
    return block.rows.size() <= floatRows && stands(true) && stands(false);
}

/// What stands on a page, apart from what stands in its gutters.
struct Parted
{
    Blocks text, floats;
};

Parted withoutFloats(const Blocks& blocks)
{
    Parted parted;
    size_t marks = 0, floating = 0;
    for (const TextBlock* block : blocks) {
        const bool out = isFloat(*block, blocks);
        (out ? parted.floats : parted.text).push_back(block);
        marks += block->marks;
        floating += out ? block->marks : 0;
    }
    if (static_cast<double>(floating) > floatShare * static_cast<double>(marks))
        return {blocks, {}};
    return parted;
}

} // namespace

bool mayHaveGutter(const Blocks& blocks, int markHeight)
{
    return !gapsOf(blocks, markHeight).empty() || !gapsOf(withoutFloats(blocks).text, markHeight).empty();
}

std::optional<Gutter> findGutter(const Blocks& blocks, int markHeight)
{
    if (std::optional<Gutter> gutter = widest(blocks, markHeight))
        return gutter;
    Parted parted = withoutFloats(blocks);
    if (parted.floats.empty())
        return std::nullopt;
    std::optional<Gutter> gutter = widest(parted.text, markHeight);
    if (gutter)
        gutter->between = std::move(parted.floats);
    return gutter;
}

} // namespace mirvak
