#pragma once

#include <opencv2/core.hpp>

#include <array>

namespace face {

constexpr size_t landmarkCount = 68;
/// Pixels of the picture: chin line 0-16 from the picture's left, brows 17-26, nose 27-35, eyes 36-47, mouth
/// 48-67 (the marking of Sagonas and others, "300 Faces in-the-Wild Challenge", 2013).
using Landmarks = std::array<cv::Point2f, landmarkCount>;

constexpr size_t noseTip = 30;
constexpr size_t leftMouthCorner = 48;
constexpr size_t rightMouthCorner = 54;

/// The middle of landmarks `first` to `last`.
cv::Point2f middleOf(const Landmarks& points, size_t first, size_t last);
/// As the picture has them: the left one is the person's right eye.
cv::Point2f leftEye(const Landmarks& points);
cv::Point2f rightEye(const Landmarks& points);
/// Pixels between the middles of the eyes.
double eyeDistance(const Landmarks& points);

} // namespace face
