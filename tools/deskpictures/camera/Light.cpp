#include "Light.h"

#include "Noise.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>

namespace deskpictures {
namespace {

constexpr double degree = CV_PI / 180;
constexpr int coarse = 16; // light changes slowly: it is computed on every 16th pixel

double shadowFactor(const Light& light, double x, double y)
{
    const double dx = (x - light.shadowAt.x) / light.shadowSize.width;
    const double dy = (y - light.shadowAt.y) / light.shadowSize.height;
    const double distance = std::sqrt(dx * dx + dy * dy);
    // A soft edge between 70 and 130 per cent of the axes.
    const double t = std::clamp((1.3 - distance) / 0.6, 0.0, 1.0);
    return 1 - light.shadowDepth * t * t * (3 - 2 * t);
}

} // namespace

cv::Mat lightMap(const Light& light, cv::Size picturePx, uint64_t seed)
{
    cv::Mat small(picturePx.height / coarse + 1, picturePx.width / coarse + 1, CV_32F);
    const cv::Point2d lamp(std::cos(light.fromDegrees * degree), std::sin(light.fromDegrees * degree));
    const double aspect = static_cast<double>(picturePx.width) / picturePx.height;
    small.forEach<float>([&](float& value, const int* at) {
        const double x = (at[1] + 0.5) / small.cols;
        const double y = (at[0] + 0.5) / small.rows;
        const double across = (x - 0.5) * aspect;
        const double down = y - 0.5;
        const double radius2 = (across * across + down * down) / (0.25 * (1 + aspect * aspect));
        const double slope = 1 + light.falloff * 1.6 * (across * lamp.x + down * lamp.y);
        value = static_cast<float>(slope * (1 - light.vignette * radius2 * (0.7 + 0.3 * radius2)) *
                                   shadowFactor(light, x, y));
    });
    // Paper is never quite flat, and no lamp quite even.
    cv::RNG random(seed);
    small = small.mul(
        1 + 0.014 * fractalNoise(small.size(), {small.cols / 5.0, small.rows / 4.0}, 3, 0.5, random));
    cv::Mat result;
    cv::resize(small, result, picturePx, 0, 0, cv::INTER_CUBIC);
    return result;
}

void throwShadow(cv::Mat& light, const cv::Mat& alpha, const Throw& shadow, double lampFromDegrees)
{
    // Soft things need few pixels; a sharp contact shadow keeps them all.
    const int step = std::clamp(static_cast<int>(shadow.softPx / 1.5), 1, 8);
    cv::Mat small;
    cv::resize(alpha, small, {}, 1.0 / step, 1.0 / step, cv::INTER_AREA);
    const cv::Matx23d move(1,
                           0,
                           -shadow.heightPx / step * std::cos(lampFromDegrees * degree),
                           0,
                           1,
                           -shadow.heightPx / step * std::sin(lampFromDegrees * degree));
    cv::warpAffine(small, small, move, small.size(), cv::INTER_LINEAR, cv::BORDER_REPLICATE);
    cv::GaussianBlur(small, small, {}, shadow.softPx / step);
    cv::Mat dark;
    cv::resize(small, dark, alpha.size(), 0, 0, cv::INTER_LINEAR);
    const float depth = static_cast<float>(shadow.depth / (255.0 * 255.0));
    light.forEach<float>([&](float& value, const int* at) {
        const int below = 255 - alpha.at<uchar>(at[0], at[1]);
        value *= 1 - depth * dark.at<uchar>(at[0], at[1]) * below;
    });
}

} // namespace deskpictures
