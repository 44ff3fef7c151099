#pragma once

#include <opencv2/core.hpp>

namespace deskpictures {

/// The light that falls upon a desk, uneven as light is.
struct Light
{
    double fromDegrees = 225;           ///< the side the lamp stands on: 0 right, 90 below, as in the picture
    double falloff = 0.14;              ///< how much darker the far side is than the middle
    double vignette = 0.16;             ///< how much darker the lens shows its corners
    cv::Point2d shadowAt = {1.1, 0.9};  ///< middle of a soft shadow, as parts of width and height
    cv::Size2d shadowSize = {0.5, 0.7}; ///< its half axes, likewise
    double shadowDepth = 0;             ///< 0 none, 1 black
    cv::Vec3d cast = {1, 1, 1};         ///< red, green, blue gains that the white balance left over
    double exposure = 1;
};

/// Brightness of every pixel without the cast, CV_32F, about 1 in the middle.
/// @param seed  of its small unevenness
cv::Mat lightMap(const Light& light, cv::Size picturePx, uint64_t seed);

/// The shadow that a thing throws on what lies below it.
struct Throw
{
    double heightPx = 2; ///< how far the shadow is moved away from the lamp
    double softPx = 2;   ///< its blur (standard deviation)
    double depth = 0.3;  ///< 0 none, 1 black
};

/// Darkens light below a thing, but not upon it. @param alpha  CV_8U, 255 where the thing is; the picture's
/// size
void throwShadow(cv::Mat& light, const cv::Mat& alpha, const Throw& shadow, double lampFromDegrees);

} // namespace deskpictures
