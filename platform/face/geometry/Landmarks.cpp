#include "Landmarks.h"

namespace face {

cv::Point2f middleOf(const Landmarks& points, size_t first, size_t last)
{
    cv::Point2f sum;
    for (size_t i = first; i <= last; ++i)
        sum += points[i];
    return sum / static_cast<float>(last - first + 1);
}

cv::Point2f leftEye(const Landmarks& points)
{
    return middleOf(points, 36, 41);
}

cv::Point2f rightEye(const Landmarks& points)
{
    return middleOf(points, 42, 47);
}

double eyeDistance(const Landmarks& points)
{
    return cv::norm(rightEye(points) - leftEye(points));
}

} // namespace face
