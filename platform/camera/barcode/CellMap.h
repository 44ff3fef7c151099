#pragma once

#include <opencv2/core.hpp>

namespace mirvak {

/// What small square cells of a grey picture look like; all CV_32FC1, one value a cell.
struct CellMap
{
    static constexpr int cellSide = 8; ///< pixels

    cv::Mat mean;    ///< grey value
    cv::Mat darkest; ///< in the cell and its neighbours
    cv::Mat lightest;
    cv::Mat edges; ///< mean square of the grey differences along rows and columns

    explicit CellMap(const cv::Mat& grey);
};

} // namespace mirvak
