#pragma once

#include "CameraBackend.h"

#include <optional>

namespace mirvak {

/// Every combination of a format that the library decodes and a frame size that the open video device offers.
/// Continuous size ranges are represented by the usual picture sizes within them and the largest one.
std::vector<CameraMode> listVideoModes(int fd);

/// The driver's name of the format (V4L2_PIX_FMT_...).
uint32_t fourccOf(PixelFormat format);

/// Asks the driver for the highest frame rate of the mode that is set. Drivers without a choice are left
/// alone.
void chooseHighestRate(int fd, const CameraMode& mode);

} // namespace mirvak
