#include "Noise.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>

namespace deskpictures {

cv::Mat valueNoise(cv::Size size, cv::Size2d cellPx, cv::RNG& random)
{
    // Two cells more each way: the cubic's border cells would be flat.
    const cv::Size inner(std::max(2, static_cast<int>(std::ceil(size.width / cellPx.width))),
                         std::max(2, static_cast<int>(std::ceil(size.height / cellPx.height))));
    cv::Mat grid(inner.height + 2, inner.width + 2, CV_32F);
    random.fill(grid, cv::RNG::UNIFORM, -1.0, 1.0);
    cv::Mat hills;
    const double scaleX = static_cast<double>(size.width) / inner.width;
    const double scaleY = static_cast<double>(size.height) / inner.height;
    const cv::Size wide(static_cast<int>(std::lround(grid.cols * scaleX)),
                        static_cast<int>(std::lround(grid.rows * scaleY)));
    cv::resize(grid, hills, wide, 0, 0, cv::INTER_CUBIC);
    const cv::Rect middle(
        (hills.cols - size.width) / 2, (hills.rows - size.height) / 2, size.width, size.height);
    return hills(middle).clone();
}

cv::Mat fractalNoise(cv::Size size, cv::Size2d cellPx, int octaves, double gain, cv::RNG& random)
{
    cv::Mat sum = cv::Mat::zeros(size, CV_32F);
    double height = 1;
    double total = 0;
    for (int i = 0; i < octaves && std::max(cellPx.width, cellPx.height) >= 1; ++i) {
        cv::scaleAdd(valueNoise(size, cellPx, random), height, sum, sum);
        total += height;
        height *= gain;
        cellPx = {std::max(1.0, cellPx.width / 2), std::max(1.0, cellPx.height / 2)};
    }
    return sum / total;
}

} // namespace deskpictures
