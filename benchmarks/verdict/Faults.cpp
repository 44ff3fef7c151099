#include "Faults.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>

namespace {

/// Levels are light to the power of 1 / 2.2, roughly: light is added and scaled as such.
cv::Mat lightOf(const cv::Mat& picture)
{
    cv::Mat light;
    picture.convertTo(light, CV_32F, 1.0 / 255);
    cv::pow(light, 2.2, light);
    return light;
}

cv::Mat levelsOf(cv::Mat light)
{
    cv::Mat picture;
    light = cv::max(light, 0);
    cv::pow(light, 1 / 2.2, light);
    light.convertTo(picture, CV_8U, 255);
    return picture;
}

double shareOfLongest(const cv::Mat& picture, cv::RNG& random)
{
    return std::max(picture.cols, picture.rows) * random.uniform(0.005, 0.015);
}

} // namespace

namespace faults {

cv::Mat grainy(const cv::Mat& picture, double noise, cv::RNG& random)
{
    cv::Mat grain(picture.size(), CV_8UC3), result;
    random.fill(grain, cv::RNG::NORMAL, 128, noise);
    cv::addWeighted(picture, 1, grain, 1, -128, result);
    return result;
}

cv::Mat dim(const cv::Mat& picture, double light, double readNoise, cv::RNG& random)
{
    cv::Mat energy = lightOf(picture) * light, grain(picture.size(), CV_32FC3);
    random.fill(grain, cv::RNG::NORMAL, 0, readNoise);
    return levelsOf(energy + grain);
}

cv::Mat partOutside(const cv::Mat& picture, const Corners& sheet)
{
    const cv::Point2d middle = 0.25 * (sheet[0] + sheet[1] + sheet[2] + sheet[3]);
    const int left = std::clamp(cvRound(middle.x), 0, picture.cols / 2);
    return picture(cv::Rect(left, 0, picture.cols - left, picture.rows)).clone();
}

cv::Mat pushed(const cv::Mat& picture, int frame)
{
    const double reach = 0.02 * picture.cols;
    const cv::Matx23d shift(1, 0, reach * std::sin(0.9 * frame), 0, 1, reach * std::cos(0.7 * frame));
    cv::Mat result;
    cv::warpAffine(picture, result, shift, picture.size(), cv::INTER_LINEAR, cv::BORDER_REPLICATE);
    return result;
}

cv::Mat outOfFocus(const cv::Mat& picture, cv::RNG& random)
{
    const int across = cvRound(shareOfLongest(picture, random)) | 1;
    cv::Mat disc(across, across, CV_32F, cv::Scalar(0)), result;
    cv::circle(disc, {across / 2, across / 2}, across / 2, 1, cv::FILLED, cv::LINE_AA);
    cv::filter2D(lightOf(picture), result, -1, disc / cv::sum(disc)[0]);
    return levelsOf(result);
}

cv::Mat smeared(const cv::Mat& picture, cv::RNG& random)
{
    const int length = cvRound(shareOfLongest(picture, random)) | 1;
    const double angle = random.uniform(0.0, CV_PI);
    cv::Mat path(length, length, CV_32F, cv::Scalar(0)), result;
    const cv::Point2d half(0.5 * length * std::cos(angle), 0.5 * length * std::sin(angle));
    const cv::Point2d middle(length / 2, length / 2);
    cv::line(path, middle - half, middle + half, 1, 1, cv::LINE_AA);
    cv::filter2D(lightOf(picture), result, -1, path / cv::sum(path)[0]);
    return levelsOf(result);
}

cv::Mat mirroredLamp(const cv::Mat& picture, const Corners& sheet, cv::RNG& random)
{
    const double u = random.uniform(0.25, 0.75), v = random.uniform(0.25, 0.75);
    const cv::Point2d top = sheet[0] + u * (sheet[1] - sheet[0]), foot = sheet[3] + u * (sheet[2] - sheet[3]);
    const cv::Point2d at = top + v * (foot - top);
    const double size = cv::norm(sheet[1] - sheet[0]);
    const double wide = size * random.uniform(0.03, 0.09), high = size * random.uniform(0.03, 0.09);
    const double strength = random.uniform(1.0, 6.0);
    cv::Mat light = lightOf(picture);
    light.forEach<cv::Vec3f>([&](cv::Vec3f& value, const int* place) {
        const double x = (place[1] - at.x) / wide, y = (place[0] - at.y) / high;
        const auto more = static_cast<float>(strength * std::exp(-0.5 * (x * x + y * y)));
        value += cv::Vec3f::all(more);
    });
    return levelsOf(light);
}

} // namespace faults
