#pragma once

#include "Landmarks.h"

#include <opencv2/core.hpp>

namespace face {

/// How much a face in an infrared picture is like that of a living person before the camera's own light: 0 to
/// 100. Skin throws near infrared back, brows, lashes and pupils do not; most inks do not show there at all.
/// The moist eye mirrors the lamps. A head is round and nearer to the lamps than what is behind it, a sheet
/// is neither. `gray` is CV_8U.
int infraredScore(const cv::Mat& gray, const Landmarks& points);

} // namespace face
