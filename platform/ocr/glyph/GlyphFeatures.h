#pragma once

#include <opencv2/core.hpp>

namespace mirvak {

/// How many numbers describe a glyph: strengths of eight directions of slope at 8 x 8 places.
constexpr int glyphFeatures = 8 * 8 * 8;

/// What the picture of one character looks like, whatever its size, weight and darkness: the gradient feature
/// of Liu and others, Handwritten digit recognition: investigation of normalization and feature extraction
/// techniques (Pattern Recognition 37, 2004), with their normalisation that keeps narrow characters narrow.
/// Reentrant.
/// @param grey 8-bit grey, dark on white, of any size, with white about the character or without
/// @return 1 x glyphFeatures, 32-bit float, of length 1; empty when there is no ink
cv::Mat glyphFeaturesOf(const cv::Mat& grey);

} // namespace mirvak
