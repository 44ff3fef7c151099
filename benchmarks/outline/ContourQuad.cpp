#include "ContourQuad.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <vector>

std::optional<std::array<cv::Point2d, 4>> contourQuad(const cv::Mat& rgb)
{
    const double scale = 640.0 / std::max(rgb.cols, rgb.rows);
    cv::Mat small, edges;
    cv::resize(rgb, small, {}, scale, scale, cv::INTER_AREA);
    cv::cvtColor(small, small, cv::COLOR_RGB2GRAY);
    cv::GaussianBlur(small, small, {5, 5}, 0);
    cv::Canny(small, edges, 50, 150);
    cv::dilate(edges, edges, cv::Mat());
    std::vector<std::vector<cv::Point>> contours;
    cv::findContours(edges, contours, cv::RETR_LIST, cv::CHAIN_APPROX_SIMPLE);
    double most = 0.01 * small.total();
    std::optional<std::array<cv::Point2d, 4>> best;
    for (const auto& contour : contours) {
        std::vector<cv::Point> corners;
        cv::approxPolyDP(contour, corners, 0.02 * cv::arcLength(contour, true), true);
        if (corners.size() != 4 || !cv::isContourConvex(corners) || cv::contourArea(corners) <= most)
            continue;
        most = cv::contourArea(corners);
        best.emplace();
        std::transform(corners.begin(), corners.end(), best->begin(), [&](const cv::Point& p) {
            return cv::Point2d(p) / scale;
        });
    }
    return best;
}
