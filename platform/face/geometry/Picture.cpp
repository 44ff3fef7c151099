#include "Picture.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <vector>

namespace face {

cv::Mat resized(const cv::Mat& picture, cv::Size size)
{
    cv::Mat result;
    const cv::Size whole(std::max(1, size.width), std::max(1, size.height));
    cv::resize(picture, result, whole, 0, 0, whole.width < picture.cols ? cv::INTER_AREA : cv::INTER_LINEAR);
    return result;
}

cv::Mat lightened(const cv::Mat& rgb)
{
    constexpr int few = 50; // one pixel in as many is lighter than what is measured
    constexpr double dark = 100, light = 200, most = 8;
    std::vector<uchar> values;
    for (int y = 0; y < rgb.rows; y += 1 + rgb.rows / 256)
        for (int x = 0; x < rgb.cols; x += 1 + rgb.cols / 256)
            values.push_back(rgb.at<cv::Vec3b>(y, x)[1]);
    const auto lightest = values.end() - 1 - static_cast<std::ptrdiff_t>(values.size() / few);
    std::nth_element(values.begin(), lightest, values.end());
    if (*lightest >= dark)
        return rgb;
    cv::Mat result;
    rgb.convertTo(result, -1, std::min(most, light / std::max<double>(1, *lightest)));
    return result;
}

cv::Rect inside(const cv::Rect2f& rectangle, const cv::Mat& picture)
{
    const cv::Point begin(cvFloor(rectangle.x), cvFloor(rectangle.y));
    const cv::Point end(cvFloor(rectangle.x + rectangle.width), cvFloor(rectangle.y + rectangle.height));
    return cv::Rect(begin, end) & cv::Rect(cv::Point(), picture.size());
}

} // namespace face
