#include "RegionField.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>

namespace mirvak {

namespace {

constexpr int cellSize = 4;    // pixels
constexpr int blurred = 5;     // cells that are averaged each way
constexpr double beside = 14;  // pixels from a line: the average does not reach across it
constexpr int detailShare = 4; // of a change of colour, for a level of detail

/// The sums of one row of cells. First down, where the compiler adds many pixels at once. `columns`: room for
/// a row of pixels.
template <class Value>
void sumCells(const cv::Mat& plane, int top, int cells, unsigned short* columns, int channel, int* sums)
{
    const int width = cells * cellSize;
    const Value *a = plane.ptr<Value>(top), *b = plane.ptr<Value>(top + 1), *c = plane.ptr<Value>(top + 2),
                *d = plane.ptr<Value>(top + 3);
    for (int x = 0; x < width; ++x)
        columns[x] = static_cast<unsigned short>(a[x] + b[x] + c[x] + d[x]);
    for (int x = 0; x < cells; ++x, columns += cellSize)
        sums[4 * x + channel] = columns[0] + columns[1] + columns[2] + columns[3];
}

} // namespace

void RegionField::build(const std::array<cv::Mat, 3>& planes, const cv::Mat& change)
{
    size_ = planes[0].size();
    const cv::Size cells(size_.width / cellSize, size_.height / cellSize);
    if (cells.empty()) { // of a strip some pixels wide
        smooth_ = cv::Mat::zeros(1, 1, CV_8UC4);
        return;
    }
    cells_.create(cells, CV_8UC4);
    sums_.resize(4 * static_cast<size_t>(cells.width));
    columns_.resize(static_cast<size_t>(cellSize * cells.width));
    constexpr int all = cellSize * cellSize;
    for (int y = 0; y < cells.height; ++y) {
        for (int c = 0; c < 3; ++c)
            sumCells<unsigned char>(
                planes[static_cast<size_t>(c)], cellSize * y, cells.width, columns_.data(), c, sums_.data());
        sumCells<short>(change, cellSize * y, cells.width, columns_.data(), 3, sums_.data());
        unsigned char* cell = cells_.ptr(y);
        for (int i = 0; i < 4 * cells.width; ++i)
            cell[i] = static_cast<unsigned char>(
                std::min(255, sums_[static_cast<size_t>(i)] / (i % 4 == 3 ? all * detailShare : all)));
    }
    cv::blur(cells_, smooth_, {blurred, blurred});
}

std::array<int, 4> RegionField::at(const cv::Point2d& point) const
{
    const int x = std::clamp(static_cast<int>(point.x) / cellSize, 0, smooth_.cols - 1);
    const int y = std::clamp(static_cast<int>(point.y) / cellSize, 0, smooth_.rows - 1);
    const unsigned char* cell = smooth_.ptr(y) + 4 * static_cast<ptrdiff_t>(x);
    return {cell[0], cell[1], cell[2], cell[3]};
}

std::array<int, 4> RegionField::riseAcross(const cv::Point2d& point, const cv::Point2d& normal) const
{
    const cv::Point2d to = point + normal * beside, from = point - normal * beside;
    for (const cv::Point2d& p : {to, from}) {
        if (p.x < 0 || p.y < 0 || p.x >= size_.width || p.y >= size_.height)
            return {};
    }
    std::array<int, 4> rise = at(to);
    const std::array<int, 4> before = at(from);
    for (size_t c = 0; c < 4; ++c)
        rise[c] -= before[c];
    return rise;
}

int RegionField::distance(const std::array<int, 4>& rise)
{
    return std::max({std::abs(rise[0]), std::abs(rise[1]), std::abs(rise[2])}) + std::abs(rise[3]);
}

} // namespace mirvak
