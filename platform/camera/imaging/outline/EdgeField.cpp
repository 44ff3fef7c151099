#include "EdgeField.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cstdlib>
#include <numeric>

namespace mirvak {

namespace {

constexpr int perLevel = 4;         // gradient of a step of one level
constexpr int leastStep = 4;        // levels; below that lies what noise leaves in a reduced picture
constexpr int largestStep = 12;     // levels; even on the roughest cloth such an edge counts
constexpr double mostEdges = 0.3;   // of all pixels
constexpr int tileSize = 32;        // pixels: parts of a picture have their own noise
constexpr int histogramBins = 1024; // of gradients, four to a bin

// Sobel in two passes that the compiler can run eight pixels at a time.
void smoothColumn(const unsigned char* __restrict above,
                  const unsigned char* __restrict here,
                  const unsigned char* __restrict below,
                  int width,
                  short* __restrict smoothed,
                  short* __restrict difference)
{
    for (int x = 0; x < width; ++x) {
        smoothed[x] = static_cast<short>(above[x] + 2 * here[x] + below[x]);
        difference[x] = static_cast<short>(below[x] - above[x]);
    }
}

// All in 16 bits, and a mask instead of a branch: eight pixels an instruction.
void keepStrongest(const short* __restrict smoothed,
                   const short* __restrict difference,
                   int width,
                   short* __restrict gx,
                   short* __restrict gy,
                   short* __restrict magnitude)
{
    for (int x = 1; x < width - 1; ++x) {
        const auto dx = static_cast<short>(smoothed[x + 1] - smoothed[x - 1]);
        const auto dy = static_cast<short>(difference[x - 1] + 2 * difference[x] + difference[x + 1]);
        const auto m = static_cast<short>(std::abs(dx) + std::abs(dy));
        const auto stronger = static_cast<short>(-(m > magnitude[x])); // all bits or none
        gx[x] = static_cast<short>((dx & stronger) | (gx[x] & ~stronger));
        gy[x] = static_cast<short>((dy & stronger) | (gy[x] & ~stronger));
        magnitude[x] = static_cast<short>((m & stronger) | (magnitude[x] & ~stronger));
    }
}

// Angle of the gradient over half a turn, in steps of two degrees. The polynomial is the odd one of seventh
// degree that is nearest to the arc tangent from 0 to 1: good to a hundredth of a degree.
int directionOf(int dx, int dy)
{
    constexpr float steps = edgeDirections / static_cast<float>(CV_PI);
    constexpr float p1 = 0.9997878F, p3 = -0.3258083F, p5 = 0.1555786F, p7 = -0.04432655F;
    const auto ax = static_cast<float>(std::abs(dx)), ay = static_cast<float>(std::abs(dy));
    const float a = std::min(ax, ay) / std::max({ax, ay, 1.0F}), c = a * a;
    float angle = steps * a * (p1 + c * (p3 + c * (p5 + c * p7)));
    angle = ay > ax ? 0.5F * edgeDirections - angle : angle;
    angle = (dx ^ dy) < 0 ? edgeDirections - angle : angle;
    const int direction = cvRound(angle);
    return direction >= edgeDirections ? 0 : direction;
}

} // namespace

void EdgeField::build(const std::array<cv::Mat, 3>& planes, const cv::Mat& quiet, int cell)
{
    findGradients(planes);
    chooseThreshold();
    chooseTileThresholds();
    thin(quiet, cell);
}

float EdgeField::changeAcross(const cv::Point2d& point, const cv::Point2d& normal) const
{
    const int x = cvRound(point.x), y = cvRound(point.y);
    if (x < 0 || y < 0 || x >= gx_.cols || y >= gx_.rows)
        return 0;
    const double change = gx_.ptr<short>(y)[x] * normal.x + gy_.ptr<short>(y)[x] * normal.y;
    return static_cast<float>(std::abs(change) / perLevel);
}

void EdgeField::findGradients(const std::array<cv::Mat, 3>& planes)
{
    const cv::Size size = planes[0].size();
    for (cv::Mat* field : {&gx_, &gy_, &magnitude_}) {
        field->create(size, CV_16SC1);
        field->setTo(0);
    }
    smoothed_.resize(static_cast<size_t>(size.width));
    difference_.resize(static_cast<size_t>(size.width));
    for (int y = 1; y < size.height - 1; ++y) {
        for (const cv::Mat& plane : planes) {
            smoothColumn(plane.ptr(y - 1),
                         plane.ptr(y),
                         plane.ptr(y + 1),
                         size.width,
                         smoothed_.data(),
                         difference_.data());
            keepStrongest(smoothed_.data(),
                          difference_.data(),
                          size.width,
                          gx_.ptr<short>(y),
                          gy_.ptr<short>(y),
                          magnitude_.ptr<short>(y));
        }
    }
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

void EdgeField::thin(const cv::Mat& quiet, int cell)
{
    points_.clear();
    directions_.create(magnitude_.rows + 2 * padding, magnitude_.cols + 2 * padding, CV_8UC1);
    turned_.create(directions_.cols, directions_.rows, CV_8UC1);
    directions_.setTo(0);
    turned_.setTo(0);
    for (int y = 2; y < magnitude_.rows - 2; ++y) {
        if (y == 2 || y % cell == 0)
            findRuns(quiet, y / cell, cell);
        for (const cv::Range& run : runs_)
            thinRow(y, run.start, run.end);
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

// Keeps the ridge of the gradient across the edge (Canny's non-maximum suppression in four directions).
void EdgeField::thinRow(int y, int from, int to)
{
    const auto stride = static_cast<ptrdiff_t>(magnitude_.step1());
    const short* m = magnitude_.ptr<short>(y);
    const short* thresholds = tileThresholds_.data() + static_cast<ptrdiff_t>(y / tileSize) * tilesAcross_;
    const short* dx = gx_.ptr<short>(y);
    const short* dy = gy_.ptr<short>(y);
    for (int x = from; x < to; ++x) {
        if (m[x] < thresholds[x / tileSize])
            continue;
        const int ax = std::abs(dx[x]), ay = std::abs(dy[x]);
        ptrdiff_t across = stride;
        if (5 * ay < 2 * ax) // tan 22.5 degrees is about 2/5
            across = 1;
        else if (2 * ay <= 5 * ax)
            across = (dx[x] ^ dy[x]) < 0 ? stride - 1 : stride + 1;
        if (m[x] > m[x - across] && m[x] >= m[x + across])
            addPoint(x, y);
    }
}

void EdgeField::addPoint(int x, int y)
{
    const int direction = directionOf(gx_.ptr<short>(y)[x], gy_.ptr<short>(y)[x]);
    // A strong edge counts more than noise, but not so much that print outvotes a pale page's edge.
    const short least = tileThresholds_[static_cast<size_t>(y / tileSize * tilesAcross_ + x / tileSize)];
    const int weight = std::min(6, magnitude_.ptr<short>(y)[x] / least);
    points_.push_back({static_cast<short>(x),
                       static_cast<short>(y),
                       static_cast<unsigned char>(direction),
                       static_cast<unsigned char>(weight)});
    const auto mark = static_cast<unsigned char>(direction + 1);
    directions_.ptr(y + padding)[x + padding] = mark;
    turned_.ptr(x + padding)[y + padding] = mark;
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
