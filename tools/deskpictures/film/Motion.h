#pragma once

#include <opencv2/core.hpp>

namespace deskpictures {

/// Where a flat thing lies: its middle on the desk (mm) and its turn, clockwise.
struct Place
{
    cv::Point2d atMm;
    double degrees = 0;
};

/// The rigid motion of the plane that carries a thing from the origin to its place.
cv::Matx33d motion(const Place& place);

/// A point on the way, part 0 to 1.
Place between(const Place& from, const Place& to, double part);

/// Time to way: slow at both ends, at the start or at the end.
double ease(double t);
double easeIn(double t);
double easeOut(double t);

} // namespace deskpictures
