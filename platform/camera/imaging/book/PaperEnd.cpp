#include "PaperEnd.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>
#include <utility>

namespace mirvak {

namespace {

constexpr float leastStep = 0.025F;  // of the paper's level: what is an edge at one place
constexpr float mostStep = 0.3F;     // likewise: what is more counts no more
constexpr double wholeLine = 0.7;    // of the places across a page
constexpr double leastChange = 0.85; // of the light, between the page and a desk
constexpr double noPaper = 0.4, somePaper = 0.6, allPaper = 0.75; // of a row, on the average of several
constexpr int aroundLine = 6;                                     // rows
constexpr double wholePart = 0.55;                                // of the places of a part of a side
constexpr double grainFactor = 3;                                 // of the mean step of a desk
constexpr double leastContrast = 0.04;                            // of the paper's level
constexpr int longestGap = 2;                                     // parts of a side

double shareOf(const cv::Mat& mask, const PaperEnd::Span& span, int row)
{
    const unsigned char* values = mask.ptr(std::clamp(row, 0, mask.rows - 1));
    const auto count =
        std::count_if(values + span.from, values + span.to, [](unsigned char v) { return v > 0; });
    return static_cast<double>(count) / std::max(1, span.to - span.from);
}

} // namespace

PaperEnd::PaperEnd(cv::Mat seen, cv::Mat paper, cv::Mat level)
    : seen_(std::move(seen)), paper_(std::move(paper)), level_(std::move(level))
{
    const cv::Mat kernel = (cv::Mat_<float>(5, 1) << -0.5, -0.5, 0, 0.5, 0.5);
    cv::filter2D(level_, steps_, CV_32F, kernel);
}

int PaperEnd::clamped(int row) const
{
    return std::clamp(row, 0, rows() - 1);
}

// Outward from the print to where the paper ends for good: a picture has paper beyond it. A line shortly
// before that end parts the page from the leaves below it; without an end, the last line parts it from a
// desk of its own colour.
PaperEnd::Found PaperEnd::find(const Span& span, int start, int step, int stop) const
{
    const int lasting = std::max(4, rows() / 60), clear = std::max(3, lasting / 2);
    const int leaves = std::max(4, rows() / 50), cover = 2 * leaves;
    bool metPaper = false;
    std::vector<int> lines;
    int at = start + step * clear, drop = -1;
    for (; at != stop && at >= 0 && at < rows(); at += step) {
        if (shareOf(seen_, span, at) < 0.5)
            break;
        if (isLine(span, at))
            lines.push_back(at);
        const bool changes = !lines.empty() && lines.back() == at &&
                             paperFrom(span, at - 3 * step, -step, lasting) > somePaper &&
                             changesLevel(span, at, step, lasting);
        const double paper = paperFrom(span, at, step, lasting);
        metPaper |= paper > allPaper;
        if (!changes && paper >= noPaper)
            continue;
        const int resumed = changes ? -1 : resumes(span, at, step, lasting);
        if (resumed < 0 || (metPaper && std::abs(resumed - at) < cover)) {
            drop = at;
            break;
        }
        at = resumed;
        lines.clear();
    }
    if (drop >= 0) {
        const auto line =
            std::find_if(lines.begin(), lines.end(), [&](int l) { return std::abs(drop - l) <= leaves; });
        return {strongest(span, line == lines.end() ? drop : *line), true};
    }
    if (!lines.empty())
        return {strongest(span, lines.back()), true};
    return {at < 0 || at >= rows() ? stop : at, false};
}

bool PaperEnd::hasSide(int row, int outward, const Span& span) const
{
    int parts = 0, found = 0;
    for (int at = span.from; at + part() <= span.to; at += part(), ++parts)
        found += hasPart(row, outward, {at, at + part()});
    return found > wholeLine * parts;
}

int PaperEnd::runsOn(int row, int outward, int from, int step) const
{
    int last = from, gap = 0;
    for (int at = from; gap <= longestGap; at += step * part()) {
        const int first = step > 0 ? at : at - part();
        if (first < 0 || first + part() > columns())
            break;
        const bool isThere = hasPart(row, outward, {first, first + part()});
        gap = isThere ? 0 : gap + 1;
        if (isThere)
            last = at + step * part();
    }
    return last;
}

// Most places have a step there that the grain of the desk outside has not, and it parts two areas.
bool PaperEnd::hasPart(int row, int outward, const Span& part) const
{
    const int outside = row + 3 * aroundLine * outward;
    const auto from = [&](const cv::Mat& values, int first, int last) {
        const int a = clamped(std::min(first, last)), b = clamped(std::max(first, last)) + 1;
        return values(cv::Range(a, b), cv::Range(part.from, part.to));
    };
    const cv::Mat grain = from(steps_, outside - aroundLine, outside + aroundLine);
    const auto band = [&](int distance) {
        const int first = row + distance * outward;
        return cv::mean(from(level_, first, first + aroundLine * outward))[0];
    };
    const double beyond = band(aroundLine / 2), beside = std::abs(beyond - band(2 * aroundLine));
    if (std::abs(beyond - band(-aroundLine * 3 / 2)) < leastContrast + beside)
        return false;
    const double least = std::max<double>(leastStep, grainFactor * cv::mean(cv::abs(grain))[0]);
    int most = 0;
    for (int j = std::max(1, row - aroundLine); j <= std::min(rows() - 2, row + aroundLine); ++j) {
        int count = 0;
        for (int i = part.from; i < part.to; ++i)
            count += std::abs(steps_.at<float>(j - 1, i)) > least ||
                     std::abs(steps_.at<float>(j, i)) > least || std::abs(steps_.at<float>(j + 1, i)) > least;
        most = std::max(most, count);
    }
    return most > wholePart * (part.to - part.from);
}

std::vector<cv::Point2d> PaperEnd::edge(const Span& span, int row, int reach) const
{
    double sum = 0;
    for (int j = std::max(0, row - 1); j <= std::min(rows() - 1, row + 1); ++j)
        for (int i = span.from; i < span.to; ++i)
            sum += steps_.at<float>(j, i);
    const double sign = sum < 0 ? -1 : 1;
    std::vector<cv::Point2d> found;
    for (int i = span.from; i < span.to; i += 2) {
        const auto step = [&](int j) { return sign * steps_.at<float>(j, i); };
        int best = -1;
        double most = leastStep;
        for (int j = std::max(1, row - reach); j < std::min(rows() - 1, row + reach + 1); ++j) {
            if (step(j) > most) {
                most = step(j);
                best = j;
            }
        }
        if (best < 0)
            continue;
        const double before = step(best - 1), after = step(best + 1), bend = before - 2 * most + after;
        const double part = bend < -1e-6 ? std::clamp(0.5 * (before - after) / bend, -0.5, 0.5) : 0;
        found.emplace_back(i, best + part);
    }
    return found;
}

// Whether it is darker or brighter for good beyond a line; a soft shadow has no line.
bool PaperEnd::changesLevel(const Span& span, int row, int step, int lasting) const
{
    const double inside = levelFrom(span, row - 3 * step, -step, lasting);
    const double outside = levelFrom(span, row + 3 * step, step, 3 * lasting);
    return outside < leastChange * inside || inside < leastChange * outside;
}

double PaperEnd::levelFrom(const Span& span, int row, int step, int lasting) const
{
    const int last = clamped(row + step * lasting), first = clamped(std::min(row, last));
    const int after = std::clamp(std::max(row, last) + 1, first + 1, rows());
    return cv::mean(level_(cv::Range(first, after), cv::Range(span.from, span.to)))[0];
}

double PaperEnd::paperFrom(const Span& span, int row, int step, int lasting) const
{
    double paper = 0;
    for (int i = 0; i < lasting; ++i)
        paper += shareOf(paper_, span, row + i * step);
    return paper / lasting;
}

// Where there is paper again, or -1.
int PaperEnd::resumes(const Span& span, int row, int step, int lasting) const
{
    for (; row >= 0 && row < rows(); row += step) {
        if (shareOf(seen_, span, row) < 0.5)
            return -1;
        if (paperFrom(span, row, step, lasting) > allPaper)
            return row;
    }
    return -1;
}

bool PaperEnd::isLine(const Span& span, int row) const
{
    const float* steps = steps_.ptr<float>(clamped(row));
    int up = 0, down = 0;
    for (int i = span.from; i < span.to; ++i) {
        up += steps[i] > leastStep;
        down += steps[i] < -leastStep;
    }
    return std::max(up, down) > wholeLine * std::max(1, span.to - span.from);
}

double PaperEnd::meanStep(const Span& span, int row) const
{
    const float* steps = steps_.ptr<float>(clamped(row));
    double sum = 0;
    for (int i = span.from; i < span.to; ++i)
        sum += std::clamp(steps[i], -mostStep, mostStep);
    return std::abs(sum) / std::max(1, span.to - span.from);
}

int PaperEnd::strongest(const Span& span, int row) const
{
    int best = row;
    double most = 0;
    for (int i = -aroundLine; i <= aroundLine; ++i) {
        const double mean = meanStep(span, row + i);
        if (mean > most) {
            most = mean;
            best = row + i;
        }
    }
    return clamped(best);
}

} // namespace mirvak
