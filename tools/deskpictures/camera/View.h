#pragma once

#include <opencv2/core.hpp>

#include <array>

namespace deskpictures {

/// How the page lies and where the camera hangs.
struct Pose
{
    double turnDegrees = 0;     ///< of the page on the desk, clockwise as the camera sees it
    double tiltDegrees = 4;     ///< of the camera's axis from the plumb line
    double fromDegrees = 90;    ///< the side the camera hangs to: 0 right, 90 below, as in the picture
    double distanceMm = 430;    ///< from the camera to the middle of the page
    double fill = 0.97;         ///< part of the picture's height or width that the page takes
    cv::Point2d shift = {0, 0}; ///< of the page from the picture's middle, as part of the picture's height
};

/// A pinhole camera over a desk. Desk coordinates are millimetres: origin in the page's middle, x right, y
/// down (towards the reader), z up. Picture coordinates are pixels; the centre of the top left pixel is (0,
/// 0).
class View
{
public:
    /// @param pageMm  its corners, turned by the pose, are fitted into the picture
    View(const Pose& pose, cv::Size2d pageMm, cv::Size picturePx);

    cv::Size picturePx() const { return m_picturePx; }
    cv::Point2d project(cv::Point3d deskMm) const;
    /// From a point of the page (mm, origin in its middle, not turned) to the desk.
    cv::Point2d pageToDesk(cv::Point2d pageMm) const;
    /// Homography from the desk's plane (mm) to the picture (px).
    cv::Matx33d deskToPicture() const;
    /// The same from the page's own plane coordinates (mm, origin in its middle).
    cv::Matx33d pageToPicture() const;
    cv::Point3d eyeMm() const { return m_eye; }
    double pxPerMm() const;
    /// Top left, top right, bottom right, bottom left of the page in the picture.
    std::array<cv::Point2d, 4> corners(cv::Size2d pageMm) const;

private:
    cv::Size m_picturePx;
    double m_cos;
    double m_sin;
    cv::Point3d m_eye;
    cv::Matx34d m_projection;
};

} // namespace deskpictures
