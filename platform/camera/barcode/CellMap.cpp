#include "CellMap.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>

namespace mirvak {

namespace {

constexpr int side = CellMap::cellSide;

struct Cell
{
    int sum = 0, squares = 0;
    unsigned char darkest = 255, lightest = 0;
};

// The pixels of one cell, one row of it at a time. All rows have their neighbours.
inline void add(Cell& cell, const unsigned char* above, const unsigned char* row, const unsigned char* below)
{
    int sum = 0, squares = 0;
    unsigned char darkest = cell.darkest, lightest = cell.lightest;
    for (int x = 0; x < side; ++x) {
        const int across = row[x + 1] - row[x - 1], down = below[x] - above[x];
        sum += row[x];
        squares += across * across + down * down;
        darkest = std::min(darkest, row[x]);
        lightest = std::max(lightest, row[x]);
    }
    cell.sum += sum;
    cell.squares += squares;
    cell.darkest = darkest;
    cell.lightest = lightest;
}

} // namespace

CellMap::CellMap(const cv::Mat& grey)
{
    // A border of one pixel stays out, so that every pixel of a cell has its neighbours.
    const cv::Size cells(std::max(0, (grey.cols - 2) / side), std::max(0, (grey.rows - 2) / side));
    for (cv::Mat* map : {&mean, &darkest, &lightest, &edges})
        map->create(cells, CV_32FC1);
    if (cells.empty())
        return;
    cv::parallel_for_(cv::Range(0, cells.height), [&](const cv::Range& rows) {
        for (int cy = rows.start; cy < rows.end; ++cy) {
            for (int cx = 0; cx < cells.width; ++cx) {
                Cell cell;
                for (int y = 1 + cy * side; y < 1 + (cy + 1) * side; ++y) {
                    const int x = 1 + cx * side;
                    add(cell, grey.ptr(y - 1) + x, grey.ptr(y) + x, grey.ptr(y + 1) + x);
                }
                mean.at<float>(cy, cx) = float(cell.sum) / (side * side);
                edges.at<float>(cy, cx) = float(cell.squares) / (side * side);
                darkest.at<float>(cy, cx) = cell.darkest;
                lightest.at<float>(cy, cx) = cell.lightest;
            }
        }
    });
    const cv::Mat square = cv::Mat::ones(3, 3, CV_8UC1);
    cv::erode(darkest, darkest, square);
    cv::dilate(lightest, lightest, square);
}

} // namespace mirvak
