#pragma once

#include <opencv2/core.hpp>

#include <algorithm>

namespace mirvak {

/// Visits the index of a block and of the up to eight around it; blocks are counted row by row.
template <class Visit> void forEachAround(int block, cv::Size grid, Visit visit)
{
    const int x = block % grid.width, y = block / grid.width;
    for (int ny = std::max(y - 1, 0); ny <= std::min(y + 1, grid.height - 1); ++ny)
        for (int nx = std::max(x - 1, 0); nx <= std::min(x + 1, grid.width - 1); ++nx)
            visit(static_cast<size_t>(ny * grid.width + nx));
}

/// How many blocks lie between this one and the nearest border of the grid.
inline int distanceToBorder(int block, cv::Size grid)
{
    const int x = block % grid.width, y = block / grid.width;
    return std::min({x, y, grid.width - 1 - x, grid.height - 1 - y});
}

} // namespace mirvak
