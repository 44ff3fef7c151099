#include "Columns.h"

#include <algorithm>
#include <optional>
#include <set>

namespace mirvak {

namespace {

// A mark and the run of print that it belongs to: marks that follow each other at the distance of words.
struct Mark
{
    cv::Rect box;
    size_t run; ///< its number
    int length; ///< px, of the run
};
using Marking = std::vector<Mark>;

struct Span
{
    int from, to;
    int width() const { return to - from; }
};

// In heights of a mark. Words stand nearer to each other than columns do.
constexpr double widestSpace = 1.5, leastGutter = 1.6;
// Between two rows of one block; so much white also keeps a heading's size from spoiling what is below.
constexpr double widestPause = 3, otherSize = 1.6;

class Runs
{
public:
    Runs(std::vector<cv::Rect> boxes, int height) : boxes_(std::move(boxes)), height_(height)
    {
        std::sort(
            boxes_.begin(), boxes_.end(), [](const cv::Rect& a, const cv::Rect& b) { return a.x < b.x; });
    }

    Marking measure()
    {
        // From the left: each mark joins the run whose last mark ends nearest before it on its level.
        struct Open
        {
            int end, level, start;
        };
        std::vector<Open> open;
        std::vector<size_t> of(boxes_.size());
        std::vector<size_t> recent;
        for (size_t i = 0; i < boxes_.size(); ++i) {
            const cv::Rect& box = boxes_[i];
            const int level = box.y + box.height / 2;
            recent.erase(
                std::remove_if(recent.begin(),
                               recent.end(),
                               [&](size_t r) { return box.x - open[r].end > widestSpace * height_; }),
                recent.end());
            const auto fits = [&](size_t r) { return std::abs(open[r].level - level) < 0.7 * height_; };
            auto best = std::find_if(recent.begin(), recent.end(), fits);
            if (best == recent.end()) {
                open.push_back({box.br().x, level, box.x});
                recent.push_back(open.size() - 1);
                best = recent.end() - 1;
            }
            of[i] = *best;
            Open& run = open[*best];
            run.end = std::max(run.end, box.br().x);
            run.level = (3 * run.level + level) / 4;
        }
        Marking marks;
        for (size_t i = 0; i < boxes_.size(); ++i)
            marks.push_back({boxes_[i], of[i], open[of[i]].end - open[of[i]].start});
        return marks;
    }

private:
    std::vector<cv::Rect> boxes_;
    int height_;
};

cv::Rect around(const Marking& marks)
{
    cv::Rect all;
    for (const Mark& mark : marks)
        all |= mark.box;
    return all;
}

// White gaps between the marks along one axis, at least `least` wide.
std::vector<Span> gapsOf(const Marking& marks, bool across, double least)
{
    std::vector<Span> spans;
    for (const Mark& mark : marks)
        spans.push_back(across ? Span{mark.box.x, mark.box.br().x} : Span{mark.box.y, mark.box.br().y});
    std::sort(spans.begin(), spans.end(), [](const Span& a, const Span& b) { return a.from < b.from; });
    std::vector<Span> gaps;
    int end = spans.empty() ? 0 : spans.front().to;
    for (const Span& span : spans) {
        if (span.from - end >= least)
            gaps.push_back({end, span.from});
        end = std::max(end, span.to);
    }
    return gaps;
}

std::pair<Marking, Marking> cut(const Marking& marks, const Span& gap, bool across)
{
    std::pair<Marking, Marking> parts;
    for (const Mark& mark : marks)
        ((across ? mark.box.x : mark.box.y) < gap.to ? parts.first : parts.second).push_back(mark);
    return parts;
}

class PageCutter
{
public:
    explicit PageCutter(int markHeight) : height_(markHeight) {}

    std::vector<cv::Rect> run(const Marking& marks)
    {
        divide(marks);
        return std::move(blocks_);
    }

private:
    // Several rows, most of the print in long ones: a table's cells and a letter's head are short.
    bool isProse(const Marking& marks) const
    {
        const cv::Rect area = around(marks);
        if (area.width < 14 * height_ || area.height < 6 * height_)
            return false;
        const int fullRow = std::max(10 * height_, area.width / 2);
        std::set<size_t> rows;
        size_t running = 0;
        for (const Mark& mark : marks) {
            if (mark.length > fullRow) {
                rows.insert(mark.run);
                ++running;
            }
        }
        return rows.size() >= 4 && running * 10 >= marks.size() * 6;
    }

    std::optional<Span> gutter(const Marking& marks) const
    {
        std::optional<Span> best;
        for (const Span& gap : gapsOf(marks, true, height_ * leastGutter)) {
            const auto [left, right] = cut(marks, gap, true);
            if ((!best || gap.width() > best->width()) && isProse(left) && isProse(right))
                best = gap;
        }
        return best;
    }

    // Strips between white bands. Those that follow each other and share a gutter are one set of columns.
    void divide(const Marking& marks)
    {
        if (const std::optional<Span> gap = gutter(marks)) {
            const auto [left, right] = cut(marks, *gap, true);
            divide(left);
            divide(right);
            return;
        }
        std::vector<Marking> strips;
        Marking rest = marks;
        for (const Span& gap : gapsOf(marks, false, height_)) {
            auto [upper, lower] = cut(rest, gap, false);
            strips.push_back(std::move(upper));
            rest = std::move(lower);
        }
        strips.push_back(std::move(rest));
        join(strips);
    }

    void join(const std::vector<Marking>& strips)
    {
        Marking plain;
        for (size_t i = 0; i < strips.size();) {
            Marking columns;
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
    size_t columnsFrom(const std::vector<Marking>& strips, size_t first, Marking& columns) const
    {
        size_t end = first;
        Marking together;
        for (size_t i = first; i < strips.size(); ++i) {
            together.insert(together.end(), strips[i].begin(), strips[i].end());
            if (gapsOf(together, true, height_ * leastGutter).empty())
                break;
            if (gutter(together)) {
                columns = together;
                end = i + 1;
            }
        }
        return end;
    }

    // Wide white, or letters of another size: rows beside each other may stand on different lines there.
    bool isPause(const Marking& above, const Marking& below) const
    {
        if (around(below).y - around(above).br().y > widestPause * height_)
            return true;
        const int a = letterHeight(above), b = letterHeight(below);
        return std::max(a, b) > otherSize * std::min(a, b);
    }

    int letterHeight(const Marking& marks) const
    {
        std::vector<int> heights;
        for (const Mark& mark : marks) {
            if (mark.box.height * 2 > height_)
                heights.push_back(mark.box.height);
        }
        if (heights.empty())
            return height_;
        const auto middle = heights.begin() + static_cast<std::ptrdiff_t>(heights.size() / 2);
        std::nth_element(heights.begin(), middle, heights.end());
        return *middle;
    }

    void flush(Marking& plain)
    {
        if (!plain.empty())
            blocks_.push_back(around(plain));
        plain.clear();
    }

    int height_;
    std::vector<cv::Rect> blocks_;
};

} // namespace

std::vector<cv::Rect> blocksOf(const Marks& marks)
{
    if (marks.boxes.empty() || marks.height == 0)
        return {};
    return PageCutter(marks.height).run(Runs(marks.boxes, marks.height).measure());
}

} // namespace mirvak
