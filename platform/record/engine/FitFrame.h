#pragma once

#include "YuvFrame.h"

namespace mirvak {

/// Fills a frame of the film's format with a picture of any size: as large as fits, its sides in proportion,
/// in the middle of black. Both are RGB, rows without gaps.
void fitFrame(const uint8_t* rgb, int width, int height, const VideoFormat& format, uint8_t* frame);

} // namespace mirvak
