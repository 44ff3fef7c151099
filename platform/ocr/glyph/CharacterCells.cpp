#include "CharacterCells.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>
#include <limits>

namespace mirvak {

namespace {

constexpr size_t apart = 3, farthest = 8; // places between two ideographs that tell the pitch
constexpr size_t leastSteps = 2;          // such pairs
constexpr size_t goodSteps = 10;          // the same for sure
constexpr int leastPitch = 6;             // px: smaller ones cannot be told apart anyway
// In pitches.
constexpr double looseness = 0.08;        // by which a square differs from another
constexpr double otherWidth = 0.6;        // of a letter or sign, which differ much
constexpr double otherLooseness = 0.35;   // by how much
constexpr double roughness = 0.7;         // how far the recogniser is wrong
constexpr double reach = 1.5;             // how far from there an edge is looked for
constexpr double widest = 1.6;            // no letter or sign is wider
constexpr double mostOff = 0.3;           // of a square's width: a character that is not there costs less
constexpr double heights[] = {1.0, 1.08}; // of ink, that a pitch may be
// Costs, of which a square that is off by one looseness has 1.
constexpr double inkCost = 40;      // of a cut through one pitch of full ink
constexpr double outsideCost = 12;  // of as much ink in no cell as a character has
constexpr double skipCost = 20;     // of a character that is not there
constexpr double doubtfulCost = 10; // the same when the recogniser was not sure of it
constexpr double bareCost = 5;      // of a square with hardly any ink
constexpr double bare = 0.06;       // of a character's ink
constexpr double none = std::numeric_limits<double>::infinity();

double square(double value)
{
    return value * value;
}

double medianOf(std::vector<double> values)
{
    const auto half = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), half, values.end());
    return *half;
}

/// What is there of ink between two columns, in characters, and under a cut.
class Ink
{
public:
    Ink(const cv::Mat& line, size_t characters) : columns_(static_cast<size_t>(line.cols))
    {
        cv::Mat sums, rows;
        const cv::Mat ink = 255 - line;
        cv::reduce(ink, sums, 0, cv::REDUCE_SUM, CV_32S);
        before_.push_back(0);
        for (int x = 0; x < line.cols; ++x) {
            columns_[static_cast<size_t>(x)] = sums.at<int>(x) / 255.0;
            before_.push_back(before_.back() + columns_[static_cast<size_t>(x)]);
        }
        const double each = before_.back() / static_cast<double>(characters);
        for (double& sum : before_)
            sum /= std::max(1.0, each);
    }

    int width() const { return static_cast<int>(columns_.size()); }
    double upTo(int x) const { return before_[static_cast<size_t>(x)]; }
    double cutAt(int x) const // px of full ink
    {
        const auto at = static_cast<size_t>(x);
        return x == 0 || at == columns_.size() ? 0 : (columns_[at - 1] + columns_[at]) / 2;
    }

private:
    std::vector<double> columns_, before_;
};

/// The places where a character may end, with the best way to each.
struct Stage
{
    int from = 0;
    std::vector<double> cost;
    std::vector<int> left;   ///< where it begins then; its end when it is skipped
    std::vector<int> before; ///< where the character before it ends
};

struct Cut
{
    double cost = none;
    std::vector<cv::Range> cells;
};

/// One pitch tried.
class Cutting
{
public:
    Cutting(const Ink& ink, const std::vector<RoughCharacter>& characters, double pitch)
        : ink_(ink), characters_(characters), pitch_(pitch)
    {
    }

    Cut best() const
    {
        std::vector<Stage> stages{start()};
        for (size_t k = 0; k < characters_.size(); ++k)
            stages.push_back(next(stages.back(), k));
        Cut cut;
        int end = 0;
        const Stage& last = stages.back();
        for (size_t i = 0; i < last.cost.size(); ++i) {
            const int x = last.from + static_cast<int>(i);
            const double cost = last.cost[i] + outsideCost * (ink_.upTo(ink_.width()) - ink_.upTo(x));
            if (cost < cut.cost) {
                cut.cost = cost;
                end = x;
            }
        }
        if (cut.cost == none)
            return cut;
        for (size_t k = stages.size() - 1; k > 0; --k) {
            const auto at = static_cast<size_t>(end - stages[k].from);
            cut.cells.emplace_back(stages[k].left[at], end);
            end = stages[k].before[at];
        }
        std::reverse(cut.cells.begin(), cut.cells.end());
        return cut;
    }

private:
    // Where the line begins: whatever is left out there costs.
    Stage start() const
    {
        Stage stage = window(characters_.front().middle - pitch_ / 2);
        for (size_t i = 0; i < stage.cost.size(); ++i)
            stage.cost[i] = outsideCost * ink_.upTo(stage.from + static_cast<int>(i));
        return stage;
    }

    Stage window(double around) const
    {
        Stage stage;
        stage.from = std::clamp(cvRound(around - reach * pitch_), 0, ink_.width());
        const int to = std::clamp(cvRound(around + reach * pitch_), stage.from, ink_.width());
        stage.cost.assign(static_cast<size_t>(to - stage.from) + 1, none);
        stage.left.assign(stage.cost.size(), 0);
        stage.before.assign(stage.cost.size(), 0);
        return stage;
    }

    double costOf(size_t k, int left, int right) const
    {
        const double width = (right - left) / pitch_;
        const double off = ((left + right) / 2.0 - characters_[k].middle) / pitch_;
        if (!characters_[k].isIdeograph)
            return square((width - otherWidth) / otherLooseness) + square(off / roughness);
        const bool isBare = ink_.upTo(right) - ink_.upTo(left) < bare;
        return square((width - 1) / looseness) + square(off / roughness) + (isBare ? bareCost : 0);
    }

    // The best way to where a character begins: right behind the last one, or after what is left out.
    Stage beginnings(const Stage& last, int to) const
    {
        Stage begin;
        begin.from = last.from;
        double best = none;
        int from = 0;
        for (int x = last.from; x <= to; ++x) {
            const auto at = static_cast<size_t>(x - last.from);
            if (at < last.cost.size() && last.cost[at] - outsideCost * ink_.upTo(x) < best) {
                best = last.cost[at] - outsideCost * ink_.upTo(x);
                from = x;
            }
            begin.cost.push_back(best + outsideCost * ink_.upTo(x) + inkCost * ink_.cutAt(x) / pitch_);
            begin.before.push_back(from);
        }
        return begin;
    }

    Stage next(const Stage& last, size_t k) const
    {
        const double half = pitch_ / 2 * (characters_[k].isIdeograph ? 1 : otherWidth);
        Stage stage = window(characters_[k].middle + half);
        const int to = stage.from + static_cast<int>(stage.cost.size()) - 1;
        const Stage begin = beginnings(last, std::max(to, last.from));
        const bool isSquare = characters_[k].isIdeograph;
        const double skipping = characters_[k].isDoubtful ? doubtfulCost : skipCost;
        const int longest = cvRound((isSquare ? 1 + mostOff : widest) * pitch_);
        const int shortest = isSquare ? cvRound((1 - mostOff) * pitch_) : 1;
        for (int right = stage.from; right <= to; ++right) {
            const auto i = static_cast<size_t>(right - stage.from);
            for (int left = std::max(begin.from, right - longest); left <= right - shortest; ++left) {
                const auto j = static_cast<size_t>(left - begin.from);
                const double cost = begin.cost[j] + costOf(k, left, right);
                if (cost < stage.cost[i]) {
                    stage.cost[i] = cost;
                    stage.left[i] = left;
                    stage.before[i] = begin.before[j];
                }
            }
            stage.cost[i] += inkCost * ink_.cutAt(right) / pitch_;
            const int skipped = right - last.from;
            if (skipped < 0 || skipped >= static_cast<int>(last.cost.size()))
                continue;
            const double cost = last.cost[static_cast<size_t>(skipped)] + skipping;
            if (cost < stage.cost[i]) {
                stage.cost[i] = cost;
                stage.left[i] = stage.before[i] = right;
            }
        }
        return stage;
    }

    const Ink& ink_;
    const std::vector<RoughCharacter>& characters_;
    double pitch_;
};

int inkHeight(const cv::Mat& line)
{
    cv::Mat darkest;
    cv::reduce(line, darkest, 1, cv::REDUCE_MIN);
    return cv::boundingRect(darkest < 128).height;
}

// From ideographs that stand some places apart, since their places are rough (Theil 1950), or else
// neighbours.
std::vector<double> stepsOf(const std::vector<RoughCharacter>& characters)
{
    std::vector<double> steps, shortSteps;
    for (size_t i = 0; i < characters.size(); ++i) {
        for (size_t j = i + 1; j < characters.size() && j <= i + farthest; ++j) {
            if (!characters[i].isIdeograph || !characters[j].isIdeograph)
                break;
            const double step = (characters[j].middle - characters[i].middle) / static_cast<double>(j - i);
            (j >= i + apart ? steps : shortSteps).push_back(step);
        }
    }
    return steps.size() >= leastSteps ? steps : shortSteps;
}

// What the recogniser's places say; on a short line it may be far off, and the height of the print knows
// more.
std::vector<double> pitchesOf(const cv::Mat& line, const std::vector<RoughCharacter>& characters)
{
    std::vector<double> pitches;
    const std::vector<double> steps = stepsOf(characters);
    if (steps.size() < leastSteps)
        return pitches;
    pitches.push_back(medianOf(steps));
    if (steps.size() < goodSteps) {
        for (const double height : heights)
            pitches.push_back(height * inkHeight(line));
    }
    pitches.erase(std::remove_if(pitches.begin(), pitches.end(), [](double p) { return p < leastPitch; }),
                  pitches.end());
    return pitches;
}

double pitchOf(const Cut& cut, const std::vector<RoughCharacter>& characters)
{
    std::vector<double> widths;
    for (size_t i = 0; i < cut.cells.size(); ++i) {
        if (characters[i].isIdeograph && !cut.cells[i].empty())
            widths.push_back(cut.cells[i].size());
    }
    return widths.empty() ? 0 : medianOf(widths);
}

} // namespace

std::vector<cv::Rect> characterCells(const cv::Mat& line, const std::vector<RoughCharacter>& characters)
{
    std::vector<cv::Rect> cells;
    if (line.empty() || characters.empty())
        return cells;
    const Ink ink(line, characters.size());
    Cut best;
    for (const double pitch : pitchesOf(line, characters)) {
        Cut cut = Cutting(ink, characters, pitch).best();
        if (cut.cost < best.cost)
            best = std::move(cut);
    }
    const double pitch = pitchOf(best, characters);
    if (pitch >= leastPitch) { // once more by what the first cuts say
        Cut cut = Cutting(ink, characters, pitch).best();
        if (cut.cost < best.cost)
            best = std::move(cut);
    }
    for (const cv::Range& cell : best.cells)
        cells.emplace_back(cell.start, 0, cell.size(), line.rows);
    return cells;
}

} // namespace mirvak
