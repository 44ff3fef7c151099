#include "Motion.h"

#include <algorithm>
#include <cmath>

namespace deskpictures {

cv::Matx33d motion(const Place& place)
{
    const double c = std::cos(place.degrees * CV_PI / 180);
    const double s = std::sin(place.degrees * CV_PI / 180);
    return {c, -s, place.atMm.x, s, c, place.atMm.y, 0, 0, 1};
}

Place between(const Place& from, const Place& to, double part)
{
    return {from.atMm + part * (to.atMm - from.atMm), from.degrees + part * (to.degrees - from.degrees)};
}

double ease(double t)
{
    t = std::clamp(t, 0.0, 1.0);
    return t * t * (3 - 2 * t);
}

double easeIn(double t)
{
    t = std::clamp(t, 0.0, 1.0);
    return t * t;
}

double easeOut(double t)
{
    return 1 - easeIn(1 - t);
}

} // namespace deskpictures
