#include "SheetMap.h"

#include "Outline.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>

namespace mirvak {

namespace {

constexpr int longestSide = 160;    // of the picture that the network sees
constexpr double leastSpread = 12;  // levels: an even picture stays even
constexpr double sure = 0.985;      // of a cell and all around it
constexpr double leastSure = 0.005; // of all cells, for a sheet to be seen
constexpr int samplesAlong = 20;
constexpr double besideSide = 1.3;     // cells: beyond the blur of the map
constexpr float certain = 0.45F;       // that a sheet goes on beyond the picture
constexpr double leastAtBorder = 0.25; // heights of the picture
constexpr double leastSides = 2.5;     // likewise, of cells; a side is two wide

/// Of the two that the network says of each cell the `which`th, from its logits: 0 to 1.
void certaintyOf(const FeaturePlane& said, size_t which, cv::Mat& certainty)
{
    certainty.create(said.height(), said.width(), CV_32FC1);
    for (int y = 0; y < certainty.rows; ++y) {
        float* row = certainty.ptr<float>(y);
        for (int x = 0; x < certainty.cols; ++x)
            row[x] = -said.at(x, y)[which];
    }
    cv::exp(certainty, certainty);
    for (int y = 0; y < certainty.rows; ++y) {
        float* row = certainty.ptr<float>(y);
        for (int x = 0; x < certainty.cols; ++x)
            row[x] = 1 / (1 + row[x]);
    }
}

} // namespace

/// Means of whole blocks, less the mean of all, over their spread: the light of the place is no matter.
void SheetMap::fillLook(const Planes& planes)
{
    const cv::Size size = planes[0].size();
    const int factor = std::clamp(
        static_cast<int>(std::lround(static_cast<double>(std::max(size.width, size.height)) / longestSide)),
        1,
        std::min(size.width, size.height));
    cell_ = 2 * factor;
    const cv::Size small(size.width / factor, size.height / factor);
    cv::Scalar sum, squares;
    for (size_t c = 0; c < 3; ++c) {
        const cv::Rect whole(0, 0, small.width * factor, small.height * factor);
        cv::resize(planes[c](whole), reducedPlanes_[c], small, 0, 0, cv::INTER_AREA);
        cv::Scalar mean, spread;
        cv::meanStdDev(reducedPlanes_[c], mean, spread);
        sum[0] += mean[0] / 3;
        squares[0] += (spread[0] * spread[0] + mean[0] * mean[0]) / 3;
    }
    const double spread = std::sqrt(std::max(0.0, squares[0] - sum[0] * sum[0]));
    const auto mean = static_cast<float>(sum[0]),
               scale = static_cast<float>(1 / std::max(leastSpread, spread));
    FeaturePlane& look = net_.look(small.width, small.height);
    for (int y = 0; y < small.height; ++y) {
        for (size_t c = 0; c < 3; ++c) {
            const unsigned char* row = reducedPlanes_[c].ptr(y);
            float* to = look.at(0, y) + c;
            for (int x = 0; x < small.width; ++x)
                to[x * look.step()] = (row[x] - mean) * scale;
        }
    }
}

void SheetMap::build(const Planes& planes)
{
    fillLook(planes);
    const FeaturePlane& said = net_.run();
    certaintyOf(said, 0, inside_);
    certaintyOf(said, 1, border_);
    sumRows();
    findQuiet();
}

/// Of the certainties before each cell in its row.
void SheetMap::sumRows()
{
    sums_.create(inside_.rows, inside_.cols + 1, CV_32FC1);
    for (int y = 0; y < inside_.rows; ++y) {
        float* sums = sums_.ptr<float>(y);
        const float* row = inside_.ptr<float>(y);
        sums[0] = 0;
        for (int x = 0; x < inside_.cols; ++x)
            sums[x + 1] = sums[x] + row[x];
    }
}

void SheetMap::findQuiet()
{
    const cv::Mat around = cv::Mat::ones(3, 3, CV_8UC1);
    const int seen = cv::countNonZero(inside_ > sure);
    if (seen < leastSure * static_cast<double>(inside_.total()))
        quiet_ = cv::Mat();
    else
        cv::erode((inside_ < 1 - sure) & (border_ < 2 * (1 - sure)), quiet_, around);
}

bool SheetMap::hasSheetAtBorder() const
{
    const int sides = cv::countNonZero(border_ > certain);
    return longestAtBorder() >= leastAtBorder * inside_.rows && sides >= leastSides * inside_.rows;
}

// Cells in a row. The outermost ones have seen too little around them.
int SheetMap::longestAtBorder() const
{
    if (inside_.rows < 4 || inside_.cols < 4)
        return 0;
    int longest = 0;
    for (const cv::Mat& line : {inside_.row(1),
                                inside_.row(inside_.rows - 2),
                                cv::Mat(inside_.col(1).t()),
                                cv::Mat(inside_.col(inside_.cols - 2).t())}) {
        int run = 0;
        for (int i = 0; i < line.cols; ++i) {
            run = line.at<float>(i) > certain ? run + 1 : 0;
            longest = std::max(longest, run);
        }
    }
    return longest;
}

double SheetMap::share() const
{
    double all = 0;
    for (int y = 0; y < sums_.rows; ++y)
        all += sums_.at<float>(y, sums_.cols - 1);
    return all / static_cast<double>(inside_.total());
}

double SheetMap::at(const cv::Mat& map, const cv::Point2d& point) const
{
    const double x = std::clamp((point.x + 0.5) / cell_ - 0.5, 0.0, map.cols - 1.0);
    const double y = std::clamp((point.y + 0.5) / cell_ - 0.5, 0.0, map.rows - 1.0);
    const int left = std::min(static_cast<int>(x), std::max(0, map.cols - 2)),
              right = std::min(left + 1, map.cols - 1);
    const int upper = std::min(static_cast<int>(y), std::max(0, map.rows - 2)),
              lower = std::min(upper + 1, map.rows - 1);
    const double u = x - left, v = y - upper;
    return (1 - v) * ((1 - u) * map.at<float>(upper, left) + u * map.at<float>(upper, right)) +
           v * ((1 - u) * map.at<float>(lower, left) + u * map.at<float>(lower, right));
}

double SheetMap::glanceAt(const Corners& corners) const
{
    const cv::Point2d middle = 0.25 * (corners[0] + corners[1] + corners[2] + corners[3]);
    double filled = nearest(inside_, middle) / 5, bordered = 0;
    for (size_t i = 0; i < 4; ++i) {
        filled += nearest(inside_, 0.3 * middle + 0.7 * corners[i]) / 5;
        const cv::Point2d &from = corners[i], way = corners[(i + 1) % 4] - from;
        for (const double share : {0.2, 0.4, 0.6, 0.8})
            bordered += nearest(border_, from + share * way) / 16;
    }
    return 0.5 * (filled + bordered);
}

SheetMap::Fit SheetMap::fitOf(const Corners& corners) const
{
    double held = 0, all = 0, area = 0;
    for (int y = 0; y < inside_.rows; ++y) {
        // Where the row enters and leaves the outline, which is convex.
        double enter = 1e9, leave = -1e9;
        const double level = (y + 0.5) * cell_ - 0.5;
        for (size_t i = 0; i < 4; ++i) {
            const cv::Point2d &a = corners[i], &b = corners[(i + 1) % 4];
            if ((a.y <= level) == (b.y <= level))
                continue;
            const double x = (a.x + (b.x - a.x) * (level - a.y) / (b.y - a.y) + 0.5) / cell_;
            enter = std::min(enter, x);
            leave = std::max(leave, x);
        }
        const float* sums = sums_.ptr<float>(y);
        all += sums[inside_.cols];
        const int from = std::clamp(static_cast<int>(std::lround(std::min(enter, 1e6))), 0, inside_.cols);
        const int to = std::clamp(static_cast<int>(std::lround(std::max(leave, -1e6))), from, inside_.cols);
        held += sums[to] - sums[from];
        area += to - from;
    }
    Fit fit;
    fit.overlap = held / std::max(1.0, area + all - held);
    fit.filled = held / std::max(1.0, area);
    fit.holds = held / std::max(1.0, all);
    int seen = 0;
    for (size_t i = 0; i < 4; ++i) {
        const cv::Point2d &from = corners[i], way = corners[(i + 1) % 4] - from;
        const cv::Size picture(cvRound(inside_.cols * cell_), cvRound(inside_.rows * cell_));
        if (liesOnBorder(from, from + way, picture, cell_))
            continue;
        const cv::Point2d inward =
            cv::Point2d(-way.y, way.x) * (besideSide * cell_ / std::max(1.0, cv::norm(way)));
        double certain = 0, step = 0;
        for (int k = 0; k < samplesAlong; ++k) {
            const cv::Point2d p = from + way * ((k + 0.5) / samplesAlong);
            certain += at(border_, p) / samplesAlong;
            step += (at(inside_, p + inward) - at(inside_, p - inward)) / samplesAlong;
        }
        ++seen;
        fit.border += certain;
        fit.leastBorder = std::min(fit.leastBorder, certain);
        fit.step += step;
        fit.leastStep = std::min(fit.leastStep, step);
    }
    fit.border /= std::max(1, seen);
    fit.step /= std::max(1, seen);
    return fit;
}

} // namespace mirvak
