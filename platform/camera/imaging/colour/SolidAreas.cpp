#include "SolidAreas.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>
#include <vector>

namespace mirvak {

namespace {

constexpr int leastOut = 64;        // of 255: what stands out less is pale and stays white
constexpr int blackFrom = 128;      // mean of an area that becomes black
constexpr double mostSpread = 22;   // standard deviation: more is a picture
constexpr int printContrast = 30;   // darker than the area by so much is print on it
constexpr double mostPrint = 0.005; // of the area: more is not dust
constexpr int rim = 5;              // pixels of an area's edge that are not asked, both sides together

struct Sums
{
    double count = 0, sum = 0, squares = 0, print = 0;

    bool isSolid() const
    {
        if (count < 1)
            return false;
        const double mean = sum / count;
        return mean > blackFrom && std::sqrt(std::max(0.0, squares / count - mean * mean)) < mostSpread &&
               print < mostPrint * count;
    }
};

} // namespace

cv::Mat solidAreas(const cv::Mat& rgb, const DarknessTable& table, int window)
{
    cv::Mat grey, out(rgb.size(), CV_8UC1), areas, labels, inner, ground;
    cv::cvtColor(rgb, grey, cv::COLOR_RGB2GRAY);
    for (int y = 0; y < rgb.rows; ++y) {
        for (int x = 0; x < rgb.cols; ++x) {
            unsigned char& level = grey.ptr(y)[x];
            level = table[level];
            out.ptr(y)[x] = static_cast<unsigned char>(standsOut(rgb.ptr(y) + 3 * x, level, table));
        }
    }
    cv::Mat result = cv::Mat::zeros(rgb.size(), CV_8UC1);
    const cv::Mat wide = cv::getStructuringElement(cv::MORPH_RECT, {window, window});
    cv::morphologyEx(out, areas, cv::MORPH_OPEN, wide);
    areas = areas > leastOut;
    if (cv::countNonZero(areas) == 0)
        return result;
    cv::morphologyEx(grey, ground, cv::MORPH_OPEN, wide);
    cv::erode(areas, inner, cv::getStructuringElement(cv::MORPH_RECT, {rim, rim}));
    std::vector<Sums> all(static_cast<size_t>(cv::connectedComponents(areas, labels, 4, CV_32S)));
    for (int y = 0; y < rgb.rows; ++y) {
        for (int x = 0; x < rgb.cols; ++x) {
            if (!inner.ptr(y)[x])
                continue;
            Sums& sums = all[static_cast<size_t>(labels.at<int>(y, x))];
            const double value = out.ptr(y)[x];
            ++sums.count;
            sums.sum += value;
            sums.squares += value * value;
            sums.print += grey.ptr(y)[x] - ground.ptr(y)[x] > printContrast ? 1 : 0;
        }
    }
    std::vector<unsigned char> limits(all.size());
    for (size_t i = 1; i < all.size(); ++i)
        limits[i] = all[i].isSolid() ? static_cast<unsigned char>(all[i].sum / all[i].count / 2) : 0;
    for (int y = 0; y < rgb.rows; ++y) {
        for (int x = 0; x < rgb.cols; ++x)
            result.ptr(y)[x] = limits[static_cast<size_t>(labels.at<int>(y, x))];
    }
    // Their soft rim too.
    cv::dilate(result, result, cv::Mat());
    return result;
}

} // namespace mirvak
