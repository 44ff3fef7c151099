#include "Picture.h"

#include <opencv2/imgproc.hpp>

namespace face {

cv::Mat resized(const cv::Mat& picture, cv::Size size)
{
    cv::Mat result;
    const cv::Size whole(std::max(1, size.width), std::max(1, size.height));
    cv::resize(picture, result, whole, 0, 0, whole.width < picture.cols ? cv::INTER_AREA : cv::INTER_LINEAR);
    return result;
}

cv::Rect inside(const cv::Rect2f& rectangle, const cv::Mat& picture)
{
    const cv::Point begin(cvFloor(rectangle.x), cvFloor(rectangle.y));
    const cv::Point end(cvFloor(rectangle.x + rectangle.width), cvFloor(rectangle.y + rectangle.height));
    return cv::Rect(begin, end) & cv::Rect(cv::Point(), picture.size());
}

} // namespace face
