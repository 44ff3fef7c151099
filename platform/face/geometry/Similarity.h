#pragma once

#include <opencv2/core.hpp>

#include <vector>

namespace face {

/// Turns, scales and moves points of a plane: (x, y) -> (a x - b y + c, b x + a y + d).
struct Similarity
{
    double a = 1, b = 0, c = 0, d = 0;

    double scale() const;
    cv::Point2f operator()(cv::Point2f point) const;
    cv::Matx23d matrix() const { return {a, -b, c, b, a, d}; }
};

/// The one that brings `from` nearest to `to` by the squares of the distances, without a mirror image
/// (Umeyama, "Least-squares estimation of transformation parameters between two point patterns", 1991; in the
/// plane it has this plain form). As many points in each, at least two different ones in `from`.
Similarity nearest(const std::vector<cv::Point2f>& from, const std::vector<cv::Point2f>& to);

/// The piece of a picture that a similarity maps the pixels of a rectangle of `size` onto. What lies outside
/// the picture is black. Made smaller without aliasing, larger by cubic interpolation.
cv::Mat cutOut(const cv::Mat& rgb, const Similarity& ontoPicture, cv::Size size);

} // namespace face
