#include "Columns.h"

#include "Gutter.h"
#include "TextBlocks.h"

#include <algorithm>
#include <cstdlib>

namespace mirvak {

namespace {

// In heights of a mark, between two rows of one area; so much white also keeps a heading's size from spoiling
// what is below.
constexpr double widestPause = 3;
constexpr double otherSize = 1.6;
constexpr double marginPause = 2; // between a running head and the text
constexpr double farBelow = 5;    // of columns: a line by itself is none of theirs any more
constexpr double headingSize = 1.2;
constexpr double widestIndent = 4;
constexpr double tallest = 6;   // of a letter; higher ones are blots among few marks
constexpr double shadow = 0.25; // of a block's rim, that letters of the next row may touch
constexpr double dotBeside = 0.9, dotAbove = 0.6;
// Of the letters, that are lower. A number has tall ones only, a page of text at least so many.
constexpr double usual = 0.5, tall = 0.9;
constexpr double ruleShare = 0.75; // of the width, of a rule that ends what stands above it
constexpr size_t mostRules = 6;    // more are a table or lined paper

cv::Rect around(const Blocks& blocks)
{
    cv::Rect all;
    for (const TextBlock* block : blocks)
        all |= block->box;
    return all;
}

class PageCutter
{
public:
    PageCutter(int markHeight, const std::vector<cv::Rect>& rules) : height_(markHeight), rules_(rules) {}

    std::vector<Blocks> run(const Blocks& blocks)
    {
        std::vector<Blocks> rows = strips(blocks);
        Blocks head, foot, text;
        if (rows.size() > 1 && isMargin(rows.front(), rows[1], blocks)) {
            head = rows.front();
            rows.erase(rows.begin());
        }
        if (rows.size() > 1 && isMargin(rows.back(), rows[rows.size() - 2], blocks) &&
            !holdsNotes(rows.back(), rows)) {
            foot = rows.back();
            rows.pop_back();
        }
        for (const Blocks& row : rows)
            text.insert(text.end(), row.begin(), row.end());
        flush(head);
        divide(text);
        flush(foot);
        return std::move(areas_);
    }

private:
    // A running head or a page number: a short line away from the text, no larger than that. It is part of no
    // column, even where it stands over one.
    bool isMargin(const Blocks& row, const Blocks& next, const Blocks& all) const
    {
        const cv::Rect a = around(row), b = around(next);
        int width = 0;
        for (const TextBlock* block : row) {
            width += block->box.width;
            if (block->rows.size() > 1)
                return false;
        }
        return std::max(a.y, b.y) - std::min(a.br().y, b.br().y) > marginPause * height_ &&
               width * 2 < around(all).width &&
               letterHeight(row, tall) < headingSize * letterHeight(all, tall);
    }

    // Footnotes belong to their columns: each begins at the left edge of one, or below a short rule there.
    bool holdsNotes(const Blocks& foot, const std::vector<Blocks>& rows) const
    {
        const auto startsColumn = [&](const TextBlock* note) {
            size_t below = 0;
            for (const Blocks& row : rows) {
                below += std::any_of(row.begin(), row.end(), [&](const TextBlock* block) {
                    return block != note && starts(note->box, block->box.x);
                });
            }
            return below * 2 >= rows.size() || below > 2;
        };
        int width = 0;
        for (const Blocks& row : rows)
            width = std::max(width, around(row).width);
        const auto isBelowRule = [&](const TextBlock* note) {
            return std::any_of(rules_.begin(), rules_.end(), [&](const cv::Rect& rule) {
                const int down = note->box.y - rule.br().y;
                return starts(note->box, rule.x) && down > -height_ && down < widestPause * height_ &&
                       rule.width * 2 < width;
            });
        };
        return (foot.size() > 1 && std::all_of(foot.begin(), foot.end(), startsColumn)) ||
               std::any_of(foot.begin(), foot.end(), isBelowRule);
    }

    // At the edge, or indented like a paragraph.
    bool starts(const cv::Rect& note, int edge) const
    {
        return note.x >= edge - height_ && note.x <= edge + widestIndent * height_;
    }

    void divide(const Blocks& blocks)
    {
        if (blocks.empty())
            return;
        if (const std::optional<int> y = barrier(blocks)) {
            const auto [upper, lower] = parted(blocks, *y);
            divide(upper);
            divide(lower);
            return;
        }
        if (const std::optional<Gutter> gutter = findGutter(blocks, height_)) {
            divide(gutter->left);
            divide(gutter->right);
            for (const TextBlock* caption : gutter->between)
                areas_.push_back({caption});
            return;
        }
        join(strips(blocks));
    }

    static std::pair<Blocks, Blocks> parted(const Blocks& blocks, int y)
    {
        std::pair<Blocks, Blocks> parts;
        for (const TextBlock* block : blocks)
            (block->box.y + block->box.height / 2 < y ? parts.first : parts.second).push_back(block);
        return parts;
    }

    // A rule from side to side, with columns above or below it: they end there.
    std::optional<int> barrier(const Blocks& blocks) const
    {
        const cv::Rect area = around(blocks);
        std::vector<int> levels;
        for (const cv::Rect& rule : rules_) {
            const int y = rule.y + rule.height / 2;
            if (y <= area.y || y >= area.br().y ||
                (rule & cv::Rect(area.x, rule.y, area.width, rule.height)).width < ruleShare * area.width)
                continue;
            const bool crossed = std::any_of(blocks.begin(), blocks.end(), [&](const TextBlock* block) {
                return block->box.y + shadow * height_ < y && block->box.br().y - shadow * height_ > y;
            });
            if (!crossed)
                levels.push_back(y);
        }
        if (levels.size() > mostRules)
            return std::nullopt;
        for (const int y : levels) {
            const auto [upper, lower] = parted(blocks, y);
            if (!upper.empty() && !lower.empty() &&
                (findGutter(upper, height_) || findGutter(lower, height_)))
                return y;
        }
        return std::nullopt;
    }

    // Between bands of white from side to side.
    std::vector<Blocks> strips(Blocks blocks) const
    {
        std::sort(blocks.begin(), blocks.end(), [](const TextBlock* a, const TextBlock* b) {
            return a->box.y < b->box.y;
        });
        const int rim = cvRound(shadow * height_);
        std::vector<Blocks> all;
        int end = 0;
        for (const TextBlock* block : blocks) {
            if (all.empty() || block->box.y + rim >= end)
                all.emplace_back();
            all.back().push_back(block);
            end = std::max(end, block->box.br().y - rim);
        }
        return all;
    }

    // Strips that follow each other and share a gutter are one set of columns.
    void join(const std::vector<Blocks>& strips)
    {
        Blocks plain;
        for (size_t i = 0; i < strips.size();) {
            Blocks columns;
            const size_t next = columnsFrom(strips, i, columns);
            if (next == i) {
                if (!plain.empty() && isPause(plain, strips[i]))
                    flush(plain);
                plain.insert(plain.end(), strips[i].begin(), strips[i].end());
                ++i;
                continue;
            }
            flush(plain);
            divide(columns);
            i = next;
        }
        flush(plain);
    }

    // The end of the longest run of strips from `first` that is a set of columns as a whole.
    size_t columnsFrom(const std::vector<Blocks>& strips, size_t first, Blocks& columns) const
    {
        size_t end = first;
        Blocks together;
        for (size_t i = first; i < strips.size(); ++i) {
            if (i > first && isAfter(together, strips[i]))
                break;
            together.insert(together.end(), strips[i].begin(), strips[i].end());
            if (i + 1 == strips.size() && first == 0)
                break; // that was asked before
            if (!mayHaveGutter(together, height_))
                break;
            if (findGutter(together, height_)) {
                columns = together;
                end = i + 1;
            }
        }
        return end;
    }

    // The date or the subject of a letter, far below its addresses, stands at the edge of one of them by
    // chance.
    bool isAfter(const Blocks& columns, const Blocks& below) const
    {
        return below.size() == 1 && below.front()->rows.size() == 1 &&
               around(below).y - around(columns).br().y > farBelow * height_;
    }

    // Wide white, or letters of another size: rows beside each other may stand on different lines there.
    bool isPause(const Blocks& above, const Blocks& below) const
    {
        if (around(below).y - around(above).br().y > widestPause * height_)
            return true;
        const int a = letterHeight(above), b = letterHeight(below);
        return std::max(a, b) > otherSize * std::min(a, b);
    }

    int letterHeight(const Blocks& blocks, double share = usual) const
    {
        std::vector<int> heights;
        for (const TextBlock* block : blocks) {
            for (const Piece& row : block->rows) {
                for (const cv::Rect& mark : row.marks) {
                    if (mark.height * 2 > height_)
                        heights.push_back(mark.height);
                }
            }
        }
        if (heights.empty())
            return height_;
        const auto at =
            heights.begin() + static_cast<std::ptrdiff_t>(share * static_cast<double>(heights.size()));
        std::nth_element(heights.begin(), at, heights.end());
        return *at;
    }

    void flush(Blocks& plain)
    {
        if (!plain.empty())
            areas_.push_back(std::move(plain));
        plain.clear();
    }

    int height_;
    const std::vector<cv::Rect>& rules_;
    std::vector<Blocks> areas_;
};

bool isLetter(const cv::Rect& mark, int height)
{
    return mark.height * 2 > height && mark.height < tallest * height && mark.width < 3 * mark.height &&
           mark.height < 8 * mark.width;
}

bool hasLetter(const TextBlock& block, int height)
{
    return std::any_of(block.rows.begin(), block.rows.end(), [&](const Piece& row) {
        return std::any_of(
            row.marks.begin(), row.marks.end(), [&](const cv::Rect& mark) { return isLetter(mark, height); });
    });
}

// Dots and accents are no letters of any block: those at the rim would be cut off.
cv::Rect
withDots(const cv::Rect& box, const Blocks& blocks, const std::vector<TextBlock>& all, const Marks& marks)
{
    const auto near = [&](const cv::Rect& own) {
        const int beside = cvRound(dotBeside * marks.height), above = cvRound(dotAbove * marks.height);
        return cv::Rect(own.x - beside, own.y - above, own.width + 2 * beside, own.height + 2 * above);
    };
    cv::Rect whole = box;
    for (const cv::Rect& mark : marks.boxes) {
        if (std::max(mark.width, mark.height) > marks.height || (mark & box) == mark ||
            (mark & near(box)).empty())
            continue;
        const bool isOthers = std::any_of(all.begin(), all.end(), [&](const TextBlock& other) {
            return std::find(blocks.begin(), blocks.end(), &other) == blocks.end() &&
                   !(mark & near(other.box)).empty();
        });
        if (!isOthers)
            whole |= mark;
    }
    return whole;
}

TextArea areaOf(const Blocks& blocks, const std::vector<TextBlock>& all, const Marks& marks)
{
    TextArea area{withDots(around(blocks), blocks, all, marks), {}, false};
    for (const TextBlock& other : all) {
        // What has no letter may be a loose part of one.
        if ((other.box & area.box).empty() ||
            std::find(blocks.begin(), blocks.end(), &other) != blocks.end() ||
            !hasLetter(other, marks.height))
            continue;
        for (const Piece& row : other.rows) {
            for (const cv::Rect& mark : row.marks) {
                if (!(mark & area.box).empty())
                    area.foreign.push_back(mark);
            }
        }
    }
    return area;
}

} // namespace

std::vector<TextArea> areasOf(const Marks& marks)
{
    const std::vector<TextBlock> all = textBlocksOf(piecesOf(marks), marks.height);
    Blocks upright;
    std::vector<TextArea> areas, sideways;
    for (const TextBlock& block : all) {
        if (!hasLetter(block, marks.height))
            continue;
        if (!block.isSideways) {
            upright.push_back(&block);
            continue;
        }
        sideways.push_back(areaOf({&block}, all, marks));
        sideways.back().isSideways = true;
    }
    for (const Blocks& blocks : PageCutter(marks.height, marks.rules).run(upright))
        areas.push_back(areaOf(blocks, all, marks));
    areas.insert(areas.end(), sideways.begin(), sideways.end());
    return areas;
}

} // namespace mirvak
