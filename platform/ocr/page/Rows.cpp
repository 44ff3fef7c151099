#include "Rows.h"

#include <algorithm>
#include <numeric>

namespace mirvak {

namespace {

constexpr int seedsPerRow = 5;  // places looked at for each row that is wanted
constexpr int gapInLine = 2;    // heights of a mark; columns stand further apart
constexpr int gapInRow = 12;    // the same for sparse rows, as of a table, or of dirt that is no text
constexpr int textLength = 8;   // heights; a run of that length is hardly an accident
constexpr double offLine = 0.6; // heights by which a letter's middle may lie off that of its neighbours
constexpr double tallest = 3.5; // heights of a run: a line that rises more than that is followed less far
constexpr double bend = 0.3;    // how fast the line's middle follows the letters

int middleOf(const cv::Rect& box)
{
    return box.y + box.height / 2;
}

/// Letters from the left to the right.
class Lines
{
public:
    Lines(const Marks& marks, int longest, int widestGap)
        : height_(marks.height), longest_(longest), gapAtMost_(widestGap * marks.height)
    {
        for (const cv::Rect& mark : marks.boxes) {
            if (mark.height * 2 > height_ && mark.height < 4 * height_)
                letters_.push_back(mark);
        }
        std::sort(
            letters_.begin(), letters_.end(), [](const cv::Rect& a, const cv::Rect& b) { return a.x < b.x; });
    }

    /// Some letters, from places all over the page.
    std::vector<size_t> seeds(size_t count) const
    {
        std::vector<size_t> order(letters_.size());
        std::iota(order.begin(), order.end(), size_t(0));
        std::stable_sort(order.begin(), order.end(), [&](size_t a, size_t b) {
            return middleOf(letters_[a]) < middleOf(letters_[b]);
        });
        std::vector<size_t> chosen;
        for (size_t i = 0; i < count && !order.empty(); ++i)
            chosen.push_back(order[(2 * i + 1) * order.size() / (2 * count)]);
        return chosen;
    }

    cv::Rect runAround(size_t seed) const
    {
        cv::Rect run = letters_[seed];
        extend(run, seed, -1, longest_ / 2);
        extend(run, seed, 1, longest_);
        return run;
    }

private:
    // To the right or to the left, between words until the run has that width.
    void extend(cv::Rect& run, size_t seed, int step, int width) const
    {
        const int reach =
            step > 0 ? gapAtMost_ : gapAtMost_ + 4 * height_; // by the left edges, as they are sorted
        double middle = middleOf(letters_[seed]);
        cv::Rect words = run;
        for (size_t i = seed + static_cast<size_t>(step); i < letters_.size();
             i += static_cast<size_t>(step)) {
            const cv::Rect& mark = letters_[i];
            const int gap = step > 0 ? mark.x - run.br().x : run.x - mark.br().x;
            if (gap > reach)
                return;
            if (gap > gapAtMost_ || std::abs(middleOf(mark) - middle) > offLine * height_)
                continue;
            if (gap > height_ / 3)
                words = run;
            const cv::Rect longer = run | mark;
            if (longer.width > width || longer.height > tallest * height_) {
                run = words.width * 3 > width ? words : run;
                return;
            }
            run = longer;
            middle += bend * (middleOf(mark) - middle);
        }
    }

    std::vector<cv::Rect> letters_;
    int height_, longest_, gapAtMost_;
};

bool isAmong(const cv::Rect& row, const std::vector<cv::Rect>& rows)
{
    return std::any_of(rows.begin(), rows.end(), [&](const cv::Rect& other) {
        return (row & other).area() * 2 > std::min(row.area(), other.area());
    });
}

std::vector<cv::Rect> rowsWith(const Marks& marks, int wanted, int longest, int widestGap)
{
    const Lines lines(marks, longest, widestGap);
    std::vector<cv::Rect> rows;
    for (const size_t seed : lines.seeds(static_cast<size_t>(wanted) * seedsPerRow)) {
        const cv::Rect row = lines.runAround(seed);
        if (!isAmong(row, rows))
            rows.push_back(row);
    }
    return rows;
}

} // namespace

std::vector<cv::Rect> sampleRows(const Marks& marks, int wanted, int longest)
{
    std::vector<cv::Rect> rows = rowsWith(marks, wanted, longest, gapInLine);
    const auto isText = [&](const cv::Rect& row) { return row.width >= textLength * marks.height; };
    if (std::count_if(rows.begin(), rows.end(), isText) < wanted)
        rows = rowsWith(marks, wanted, longest, gapInRow);
    // Long first, the longest of equal ones from where they stand: the middle third, then the rest.
    std::stable_sort(rows.begin(), rows.end(), [&](const cv::Rect& a, const cv::Rect& b) {
        return std::min(a.width, longest / 2) > std::min(b.width, longest / 2);
    });
    const auto rich =
        std::find_if(rows.begin(), rows.end(), [&](const cv::Rect& row) { return row.width * 2 < longest; });
    const auto candidates =
        std::max<long>(rich - rows.begin(), std::min<long>(wanted, rows.end() - rows.begin()));
    std::vector<cv::Rect> chosen;
    for (int i = 0; i < wanted && candidates > 0; ++i) {
        const long at = (2 * i + 1) * candidates / (2 * wanted);
        if (chosen.empty() || chosen.back() != rows[static_cast<size_t>(at)])
            chosen.push_back(rows[static_cast<size_t>(at)]);
    }
    return chosen;
}

} // namespace mirvak
