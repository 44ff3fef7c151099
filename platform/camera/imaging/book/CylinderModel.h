#pragma once

#include <opencv2/core.hpp>

#include <array>
#include <vector>

namespace mirvak {

// Three systems of coordinates, all without a resolution:
//   frame  a point of the picture: from its centre, in lengths of its longer side, y downwards
//   flat   a point of the paper laid flat: (s, v), s along the paper across the spine (0 at the spine, the
//          left page is negative), v along the spine, downwards; in distances of the spine from the camera
//   cross  a point of the cross section: (x, h), x across the spine, h towards the camera

/// One side of the cross section: the slope of the paper against its distance from the spine, linear between
/// knots that lie closer where a page bends most.
class PageProfile
{
public:
    static constexpr int knots = 8;

    /// @param length  up to where the slopes are told; beyond it the paper goes on straight
    /// @param gather  1: knots at even distances; larger: closer to the spine
    explicit PageProfile(double length = 1, double gather = 1);

    /// Radians, upwards away from the spine. Call build() after a change.
    std::array<double, knots> slopes{};
    void build();
    double length() const { return length_; }
    /// (x, h) at a distance of 0 or more from the spine; x is counted away from the spine.
    cv::Point2d at(double distance) const;

    static constexpr int samples = 128;
    /// The same at even steps of length() / samples.
    const std::array<cv::Point2d, samples + 1>& table() const { return table_; }

private:
    double slopeAt(double distance) const;

    double length_;
    std::array<double, knots> places_{};
    std::array<cv::Point2d, samples + 1> table_{};
};

/// An open book as a general cylinder whose rulings run along the spine, seen by a pinhole camera whose axis
/// goes through the picture's centre (Cao, Ding, Liu: A cylindrical surface model to rectify the bound
/// document image, ICCV 2003). Slopes are told against the length of paper, so what is flattened is not
/// squeezed. Reentrant once prepared.
class CylinderModel
{
public:
    double turn = 0;                  ///< radians clockwise, of the book before the camera
    double tilt = 0;                  ///< radians, of the spine against the picture's plane
    double focal = 1.2;               ///< focal length, in lengths of the picture's longer side
    cv::Point2d spine;                ///< frame: the point of the spine that is the origin
    std::array<PageProfile, 2> pages; ///< left, right

    /// Call it after every change.
    void prepare();
    /// Flat point that a frame point shows, on the page that is asked for.
    cv::Point2d toFlat(const cv::Point2d& frame, bool isRight) const;
    /// Its inverse; the page follows from the sign of s.
    cv::Point2d toFrame(const cv::Point2d& flat) const { return toFrame(flat, flat.x >= 0); }
    cv::Point2d toFrame(const cv::Point2d& flat, bool isRight) const;

private:
    cv::Vec3d across_, along_, down_; ///< the book's axes as the camera has them; down: into the desk
    cv::Vec3d origin_;
    cv::Vec3d eye_; ///< the camera in the book's axes: x, v, h
    std::array<std::array<double, PageProfile::samples + 1>, 2> bearing_{};
};

} // namespace mirvak
