#include "View.h"

#include <algorithm>
#include <cmath>

namespace deskpictures {
namespace {

constexpr double degree = CV_PI / 180;

// Rows: the camera's right, down and forward directions in desk coordinates.
cv::Matx33d lookAt(cv::Point3d eye)
{
    const cv::Vec3d forward = cv::normalize(cv::Vec3d(-eye.x, -eye.y, -eye.z));
    const cv::Vec3d right = cv::normalize(forward.cross(cv::Vec3d(0, 1, 0)));
    const cv::Vec3d down = right.cross(forward);
    return {right[0], right[1], right[2], down[0], down[1], down[2], forward[0], forward[1], forward[2]};
}

} // namespace

View::View(const Pose& pose, cv::Size2d pageMm, cv::Size picturePx)
    : m_picturePx(picturePx), m_cos(std::cos(pose.turnDegrees * degree)),
      m_sin(std::sin(pose.turnDegrees * degree))
{
    const double lean = pose.distanceMm * std::sin(pose.tiltDegrees * degree);
    m_eye = {lean * std::cos(pose.fromDegrees * degree),
             lean * std::sin(pose.fromDegrees * degree),
             pose.distanceMm * std::cos(pose.tiltDegrees * degree)};
    // With y down and z up the desk's axes are left-handed; the projection does not mind.
    const cv::Matx33d rotation = lookAt(m_eye);
    const cv::Vec3d move = -(rotation * cv::Vec3d(m_eye.x, m_eye.y, m_eye.z));
    m_projection = cv::Matx34d(rotation(0, 0),
                               rotation(0, 1),
                               rotation(0, 2),
                               move[0],
                               rotation(1, 0),
                               rotation(1, 1),
                               rotation(1, 2),
                               move[1],
                               rotation(2, 0),
                               rotation(2, 1),
                               rotation(2, 2),
                               move[2]);
    // Focal length and shift of the lens: whatever brings the page into the picture as asked.
    const auto raw = corners(pageMm);
    const auto [left, right] = std::minmax({raw[0].x, raw[1].x, raw[2].x, raw[3].x});
    const auto [top, bottom] = std::minmax({raw[0].y, raw[1].y, raw[2].y, raw[3].y});
    const double focal =
        pose.fill * std::min(picturePx.width / (right - left), picturePx.height / (bottom - top));
    const double centreX = (picturePx.width - 1) / 2.0 + pose.shift.x * picturePx.height;
    const double centreY = (picturePx.height - 1) / 2.0 + pose.shift.y * picturePx.height;
    const cv::Matx33d lens(focal,
                           0,
                           centreX - focal * (left + right) / 2,
                           0,
                           focal,
                           centreY - focal * (top + bottom) / 2,
                           0,
                           0,
                           1);
    m_projection = lens * m_projection;
}

cv::Point2d View::project(cv::Point3d deskMm) const
{
    const cv::Vec3d p = m_projection * cv::Vec4d(deskMm.x, deskMm.y, deskMm.z, 1);
    return {p[0] / p[2], p[1] / p[2]};
}

cv::Point2d View::pageToDesk(cv::Point2d pageMm) const
{
    return {m_cos * pageMm.x - m_sin * pageMm.y, m_sin * pageMm.x + m_cos * pageMm.y};
}

cv::Matx33d View::deskToPicture() const
{
    const cv::Matx34d& p = m_projection;
    return {p(0, 0), p(0, 1), p(0, 3), p(1, 0), p(1, 1), p(1, 3), p(2, 0), p(2, 1), p(2, 3)};
}

cv::Matx33d View::pageToPicture() const
{
    return deskToPicture() * cv::Matx33d(m_cos, -m_sin, 0, m_sin, m_cos, 0, 0, 0, 1);
}

double View::pxPerMm() const
{
    const cv::Point2d across = project({0.5, 0, 0}) - project({-0.5, 0, 0});
    return std::hypot(across.x, across.y);
}

std::array<cv::Point2d, 4> View::corners(cv::Size2d pageMm) const
{
    const double x = pageMm.width / 2;
    const double y = pageMm.height / 2;
    std::array<cv::Point2d, 4> result;
    const std::array<cv::Point2d, 4> page = {{{-x, -y}, {x, -y}, {x, y}, {-x, y}}};
    for (size_t i = 0; i < page.size(); ++i) {
        const cv::Point2d desk = pageToDesk(page.at(i));
        result.at(i) = project({desk.x, desk.y, 0});
    }
    return result;
}

} // namespace deskpictures
