#pragma once

#include <opencv2/core.hpp>

#include <array>

/// What spoils a page, done to a good picture of it. 8-bit RGB in and out, corners in pixels.
namespace faults {

using Corners = std::array<cv::Point2d, 4>;

/// Noise of that standard deviation, levels.
cv::Mat grainy(const cv::Mat& picture, double noise, cv::RNG& random);
/// That part of the light, with read noise as a part of full scale.
cv::Mat dim(const cv::Mat& picture, double light, double readNoise, cv::RNG& random);
/// The picture's edge goes through the sheet.
cv::Mat partOutside(const cv::Mat& picture, const Corners& sheet);
/// The camera or the desk is pushed to and fro.
cv::Mat pushed(const cv::Mat& picture, int frame);
/// A wrong focus, its disc between 0.5 and 1.5 % of the longest side across.
cv::Mat outOfFocus(const cv::Mat& picture, cv::RNG& random);
/// Moved while the shutter was open, by 0.5 to 1.5 % of the longest side.
cv::Mat smeared(const cv::Mat& picture, cv::RNG& random);
/// A lamp in the sheet, its light added to that of the paper.
cv::Mat mirroredLamp(const cv::Mat& picture, const Corners& sheet, cv::RNG& random);

} // namespace faults
