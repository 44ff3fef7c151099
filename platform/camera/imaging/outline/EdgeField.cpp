#include "EdgeField.h"

#include "Gradients.h"

#include <opencv2/core/hal/intrin.hpp>
#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <numeric>

namespace mirvak {

namespace {

constexpr int perLevel = 4;         // gradient of a step of one level
constexpr int leastStep = 4;        // levels; below that lies what noise leaves in a reduced picture
constexpr int largestStep = 12;     // levels; even on the roughest cloth such an edge counts
constexpr double mostEdges = 0.3;   // of all pixels
constexpr int tileSize = 32;        // pixels: parts of a picture have their own noise
constexpr int mostWeight = 6;       // of an edge point
constexpr int histogramBins = 1024; // of gradients, four to a bin

} // namespace

void EdgeField::build(const std::array<cv::Mat, 3>& planes, const cv::Mat& quiet, int cell)
{
    findGradients(planes, gradientWork_, gx_, gy_, magnitude_);
    chooseThreshold();
    chooseTileThresholds();
    findPoints(quiet, cell);
}

float EdgeField::changeAcross(const cv::Point2d& point, const cv::Point2d& normal) const
{
    const int x = cvRound(point.x), y = cvRound(point.y);
    if (x < 0 || y < 0 || x >= gx_.cols || y >= gx_.rows)
        return 0;
    const double change = gx_.ptr<short>(y)[x] * normal.x + gy_.ptr<short>(y)[x] * normal.y;
    return static_cast<float>(std::abs(change) / perLevel);
}

float EdgeField::changeAlong(const cv::Point2f& from, const cv::Point2f& to, int places, float most) const
{
    const cv::Point2f step = (to - from) / static_cast<float>(places);
    const float length = std::max(1e-3F, static_cast<float>(places) * std::hypot(step.x, step.y));
    const float acrossX = -(to.y - from.y) / length, acrossY = (to.x - from.x) / length;
    cv::Point2f at = from + 0.5F * step + cv::Point2f(0.5F, 0.5F); // rounded by cutting
    float sum = 0;
    for (int i = 0; i < places; ++i, at += step) {
        const auto x = static_cast<int>(at.x), y = static_cast<int>(at.y);
        const float change = gx_.ptr<short>(y)[x] * acrossX + gy_.ptr<short>(y)[x] * acrossY;
        sum += std::min(most, std::abs(change) / perLevel);
    }
    return sum / static_cast<float>(places);
}

// Most of a picture is plain paper and plain desk: the median gradient tells noise and texture. Where print
// or pattern lies everywhere, more counts than a search has time for, and the strongest have to do.
void EdgeField::chooseThreshold()
{
    int histogram[histogramBins] = {};
    int counted = 0;
    for (int y = 1; y < magnitude_.rows - 1; y += 3) {
        const short* m = magnitude_.ptr<short>(y);
        for (int x = 1; x < magnitude_.cols - 1; x += 3, ++counted)
            ++histogram[std::min(m[x] / perLevel, histogramBins - 1)];
    }
    int below = 0, median = 0;
    while (median < histogramBins - 1 && (below += histogram[median]) < counted / 2)
        ++median;
    int level = std::clamp(3 * median / 2 + 1, leastStep, largestStep);
    int above = std::accumulate(histogram + level, histogram + histogramBins, 0);
    while (level < largestStep && above > mostEdges * counted)
        above -= histogram[level++];
    threshold_ = perLevel * level;
}

void EdgeField::chooseTileThresholds()
{
    tilesAcross_ = (magnitude_.cols + tileSize - 1) / tileSize;
    tileThresholds_.clear();
    for (int top = 0; top < magnitude_.rows; top += tileSize) {
        for (int left = 0; left < magnitude_.cols; left += tileSize) {
            int histogram[largestStep + 1] = {}, counted = 0, below = 0, median = 0;
            for (int y = top; y < std::min(top + tileSize, magnitude_.rows); y += 3) {
                const short* m = magnitude_.ptr<short>(y);
                for (int x = left; x < std::min(left + tileSize, magnitude_.cols); x += 3, ++counted)
                    ++histogram[std::min(m[x] / perLevel, largestStep)];
            }
            while (median < largestStep && (below += histogram[median]) < counted / 2)
                ++median;
            const int level = std::max(leastStep, 3 * median / 2 + 1);
            tileThresholds_.push_back(static_cast<short>(std::min(threshold_, perLevel * level)));
        }
    }
}

void EdgeField::findPoints(const cv::Mat& quiet, int cell)
{
    points_.clear();
    ridge_.reserve(magnitude_.cols);
    directions_.create(magnitude_.rows + 2 * padding, magnitude_.cols + 2 * padding, CV_8UC1);
    turned_.create(directions_.cols, directions_.rows, CV_8UC1);
    directions_.setTo(0);
    turned_.setTo(0);
    for (int y = 2; y < magnitude_.rows - 2; ++y) {
        if (y == 2 || y % cell == 0)
            findRuns(quiet, y / cell, cell);
        for (const cv::Range& run : runs_)
            thinRun(y, run.start, run.end);
        addRidge(y);
    }
}

void EdgeField::findRuns(const cv::Mat& quiet, int row, int cell)
{
    const unsigned char* cells = row < quiet.rows ? quiet.ptr(row) : nullptr;
    const int count = cells ? quiet.cols : 0;
    const int end = magnitude_.cols - 2; // there and from 2 on, pixels have neighbours to all sides
    int from = 2;
    runs_.clear();
    for (int i = 0; i <= count; ++i) {
        if (i < count && !cells[i])
            continue;
        const int to = i < count ? std::min(i * cell, end) : end;
        if (from < to)
            runs_.emplace_back(from, to);
        from = std::max(from, (i + 1) * cell);
    }
}

// Most of a picture is even: eight pixels without an edge are passed over at once.
void EdgeField::thinRun(int y, int from, int to)
{
    constexpr int together = cv::v_int16x8::nlanes;
    const short* m = magnitude_.ptr<short>(y);
    const short* thresholds = tileThresholds_.data() + static_cast<ptrdiff_t>(y / tileSize) * tilesAcross_;
    for (int x = from; x < to;) {
        const int tile = x / tileSize, end = std::min(to, (tile + 1) * tileSize);
        const cv::v_int16x8 below = cv::v_setall_s16(static_cast<short>(thresholds[tile] - 1));
        for (; x + together <= end; x += together) {
            if (cv::v_check_any(cv::v_load(m + x) > below))
                thin(y, x, x + together, thresholds[tile]);
        }
        thin(y, x, end, thresholds[tile]);
        x = end;
    }
}

// Keeps the ridge of the gradient across the edge (Canny's non-maximum suppression in four directions).
void EdgeField::thin(int y, int from, int to, short threshold)
{
    const ptrdiff_t stride = magnitude_.cols;
    const short* m = magnitude_.ptr<short>(y);
    const short* dx = gx_.ptr<short>(y);
    const short* dy = gy_.ptr<short>(y);
    for (int x = from; x < to; ++x) {
        if (m[x] < threshold)
            continue;
        const int ax = std::abs(dx[x]), ay = std::abs(dy[x]);
        ptrdiff_t across = stride;
        if (5 * ay < 2 * ax) // tan 22.5 degrees is about 2/5
            across = 1;
        else if (2 * ay <= 5 * ax)
            across = (dx[x] ^ dy[x]) < 0 ? stride - 1 : stride + 1;
        if (m[x] > m[x - across] && m[x] >= m[x + across])
            ridge_.add(x, dx[x], dy[x], m[x] / threshold);
    }
}

void EdgeField::addRidge(int y)
{
    std::array<int, directionsAtOnce> directions{};
    unsigned char* row = directions_.ptr(y + padding) + padding;
    for (size_t i = 0; i < ridge_.count; i += directions.size()) {
        findDirections(&ridge_.dx[i], &ridge_.dy[i], directions);
        for (size_t k = i; k < std::min(i + directions.size(), ridge_.count); ++k) {
            const short x = ridge_.x[k];
            const auto direction = static_cast<unsigned char>(directions[k - i]),
                       mark = static_cast<unsigned char>(direction + 1);
            points_.push_back({x, static_cast<short>(y), direction, ridge_.weight[k]});
            row[x] = mark;
            turned_.ptr(x + padding)[y + padding] = mark;
        }
    }
    ridge_.count = 0;
}

void EdgeField::Ridge::reserve(int most)
{
    // What is behind the last point is read together with it.
    const size_t room = static_cast<size_t>(most) + directionsAtOnce;
    for (std::vector<short>* values : {&x, &dx, &dy})
        values->resize(room);
    weight.resize(room);
    count = 0;
}

// A strong edge counts more than noise, but not so much that print outvotes a pale page's edge.
void EdgeField::Ridge::add(int atX, short changeX, short changeY, int strength)
{
    x[count] = static_cast<short>(atX);
    dx[count] = changeX;
    dy[count] = changeY;
    weight[count++] = static_cast<unsigned char>(std::min(strength, mostWeight));
}

void EdgeField::erase(const std::vector<cv::Point>& part)
{
    erased_.create(directions_.size(), CV_8UC1);
    erased_.setTo(0);
    cv::fillConvexPoly(erased_(cv::Rect({padding, padding}, size())), part, 255);
    const auto isGone = [this](const EdgePoint& point) {
        if (!erased_.ptr(point.y + padding)[point.x + padding])
            return false;
        directions_.ptr(point.y + padding)[point.x + padding] = 0;
        turned_.ptr(point.x + padding)[point.y + padding] = 0;
        return true;
    };
    points_.erase(std::remove_if(points_.begin(), points_.end(), isGone), points_.end());
}

double EdgeField::threshold() const
{
    return static_cast<double>(threshold_) / perLevel;
}

} // namespace mirvak
