#include "Bridge.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <array>

namespace mirvak {

cv::Mat bridged(const cv::Mat& values, const cv::Mat& weights)
{
    cv::Mat known, weighted;
    cv::merge(std::array<cv::Mat, 3>{weights, weights, weights}, known);
    cv::multiply(values, known, weighted);
    if (std::min(values.cols, values.rows) <= 2) {
        const cv::Scalar mean = cv::sum(weighted) / std::max(1e-6, cv::sum(weights)[0]);
        return cv::Mat(values.size(), CV_32FC3, mean);
    }
    cv::Mat coarseSum, coarseWeight;
    cv::pyrDown(weighted, coarseSum);
    cv::pyrDown(weights, coarseWeight);
    cv::Mat safe, coarse;
    cv::max(coarseWeight, 1e-6, safe);
    cv::merge(std::array<cv::Mat, 3>{safe, safe, safe}, known);
    cv::divide(coarseSum, known, coarse);
    cv::min(coarseWeight * 4, 1.0, coarseWeight); // a quarter of a coarse pixel is enough to know it
    cv::Mat filled;
    cv::resize(bridged(coarse, coarseWeight), filled, values.size(), 0, 0, cv::INTER_LINEAR);
    cv::Mat result(values.size(), CV_32FC3);
    for (int y = 0; y < values.rows; ++y) {
        for (int x = 0; x < values.cols; ++x) {
            const float w = weights.at<float>(y, x);
            result.at<cv::Vec3f>(y, x) =
                values.at<cv::Vec3f>(y, x) * w + filled.at<cv::Vec3f>(y, x) * (1 - w);
        }
    }
    return result;
}

} // namespace mirvak
