#include "PageMap.h"

#include <cmath>

namespace mirvak::pageMap {

namespace {

cv::Matx33d shift(double x, double y)
{
    return {1, 0, x, 0, 1, y, 0, 0, 1};
}

} // namespace

cv::Matx33d fromCentres(const cv::Matx33d& toOld)
{
    return shift(0.5, 0.5) * toOld * shift(-0.5, -0.5);
}

cv::Matx33d turnedBack(double degrees, const cv::Size& before, const cv::Size& after)
{
    const double angle = degrees * CV_PI / 180, c = std::cos(angle), s = std::sin(angle);
    const cv::Matx33d turn(c, s, 0, -s, c, 0, 0, 0, 1);
    return shift(before.width / 2.0, before.height / 2.0) * turn *
           shift(-after.width / 2.0, -after.height / 2.0);
}

cv::Matx33d scaledBack(const cv::Size& before, const cv::Size& after)
{
    return cv::Matx33d::diag({static_cast<double>(before.width) / after.width,
                              static_cast<double>(before.height) / after.height,
                              1});
}

} // namespace mirvak::pageMap
