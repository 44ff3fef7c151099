#pragma once

#include "Codec.h"

#include <opencv2/core.hpp>

namespace mirvak {

enum class PngKind { blackWhite, grey, colour };

/// The smallest kind that holds the RGB picture without loss.
PngKind pngKindOf(const cv::Mat& rgb);

/// Codes the rows of the picture. Empty when the library refuses.
Bytes writePng(const cv::Mat& rgb, PngKind kind, double dpi);

} // namespace mirvak
