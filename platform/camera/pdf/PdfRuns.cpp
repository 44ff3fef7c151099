#include "PdfRuns.h"

#include <algorithm>
#include <cmath>

namespace mirvak {

namespace {

// Degrees of a word's slant: below the first each word is made level, up to the second those whose ends do
// not move much by it. Readers take what slants more apart, letter by letter.
constexpr double almostLevel = 7, hardlyLevel = 12;
constexpr double mostTilt = 0.5; // heights of the word, by which its ends may move then

// Heights of a line: how far it may rise or fall from end to end, which readers of text put up with, and how
// far a word may be moved for that.
constexpr double mostDrift = 0.4, mostShift = 0.4;

constexpr double leastShare = 0.5; // of a word's length, that it keeps where the next one reaches into it

cv::Point2d onSheet(const cv::Matx23d& toSheet, const cv::Point2d& place)
{
    const cv::Vec2d moved = toSheet * cv::Vec3d(place.x, place.y, 1);
    return {moved[0], moved[1]};
}

bool isJoined(const PdfWord& word, const PdfWord* next)
{
    return next && next->line == word.line && !word.isSpaceBehind;
}

PdfRun runOf(const PdfWord& word, const PdfWord* next, const cv::Matx23d& toSheet)
{
    PdfRun run;
    run.start = onSheet(toSheet, word.corners[3]);
    run.along = onSheet(toSheet, word.corners[2]) - run.start;
    run.upward = onSheet(toSheet, word.corners[0]) - run.start;
    const double length = cv::norm(run.along);
    if (isJoined(word, next) && length > 0) {
        const double reach = (onSheet(toSheet, next->corners[3]) - run.start).dot(run.along) / length;
        if (reach > leastShare * length) // boxes may also overlap
            run.along *= reach / length;
    }
    return run;
}

/// The direction of the sheet's edges, in radians, that is nearest to the word's.
double levelOf(const PdfRun& run)
{
    constexpr double quarter = CV_PI / 2;
    return std::round(std::atan2(run.along.y, run.along.x) / quarter) * quarter;
}

bool isAlmostLevel(const PdfRun& run)
{
    const double slant = std::abs(std::atan2(run.along.y, run.along.x) - levelOf(run));
    const double moved = cv::norm(run.along) / 2 * std::sin(slant);
    return slant <= almostLevel * CV_PI / 180 ||
           (slant <= hardlyLevel * CV_PI / 180 && moved <= mostTilt * cv::norm(run.upward));
}

void setLevel(PdfRun& run)
{
    const double level = levelOf(run);
    const cv::Point2d middle = run.start + (run.along + run.upward) / 2;
    const cv::Point2d direction(std::cos(level), std::sin(level));
    const cv::Point2d above(-direction.y, direction.x);
    const bool isMirrored = above.dot(run.upward) < 0;
    run.along = direction * cv::norm(run.along);
    run.upward = above * (isMirrored ? -1 : 1) * cv::norm(run.upward);
    run.start = middle - (run.along + run.upward) / 2;
}

/// Words [from, to) of one line that are level already, each for itself.
class LevelLine
{
public:
    LevelLine(std::vector<PdfRun>& runs, size_t from, size_t to) : runs_(runs), from_(from), to_(to)
    {
        const double level = levelOf(runs[from]);
        direction_ = {std::cos(level), std::sin(level)};
        above_ = {-direction_.y, direction_.x};
        for (size_t i = from; i < to; ++i) {
            size_ += cv::norm(runs[i].upward) / static_cast<double>(to - from);
            middle_ += middleOf(runs[i]) / static_cast<double>(to - from);
        }
    }

    /// Makes the line level, or less slanting, where that is enough for it to stay a line.
    void straighten()
    {
        const double length = (middleOf(runs_[to_ - 1]) - middleOf(runs_[from_])).dot(direction_);
        const double slope = slopeOf(), drift = std::abs(slope * length), excess = drift - mostDrift * size_;
        if (excess <= 0 || excess > 2 * mostShift * size_)
            return;
        const double less = slope * excess / drift;
        for (size_t i = from_; i < to_; ++i)
            runs_[i].start -= above_ * (less * (middleOf(runs_[i]) - middle_).dot(direction_));
    }

private:
    static cv::Point2d middleOf(const PdfRun& run) { return run.start + run.along / 2; }

    /// By least squares.
    double slopeOf() const
    {
        double both = 0, squares = 0;
        for (size_t i = from_; i < to_; ++i) {
            const cv::Point2d away = middleOf(runs_[i]) - middle_;
            both += away.dot(direction_) * away.dot(above_);
            squares += away.dot(direction_) * away.dot(direction_);
        }
        return squares > 0 ? both / squares : 0;
    }

    std::vector<PdfRun>& runs_;
    size_t from_, to_;
    cv::Point2d direction_, above_, middle_;
    double size_ = 0;
};

} // namespace

std::vector<PdfRun> runsOf(const PdfWords& words, const cv::Matx23d& toSheet)
{
    std::vector<PdfRun> runs;
    for (size_t i = 0; i < words.size(); ++i)
        runs.push_back(runOf(words[i], i + 1 < words.size() ? &words[i + 1] : nullptr, toSheet));
    for (size_t from = 0, to = 0; from < words.size(); from = to) {
        bool isLevel = true;
        const double level = levelOf(runs[from]);
        for (to = from; to < words.size() && words[to].line == words[from].line; ++to) {
            const bool isOnLevel = isAlmostLevel(runs[to]) && levelOf(runs[to]) == level;
            if (isOnLevel)
                setLevel(runs[to]);
            isLevel = isLevel && isOnLevel;
        }
        if (isLevel)
            LevelLine(runs, from, to).straighten();
    }
    return runs;
}

} // namespace mirvak
