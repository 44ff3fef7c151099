#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace lab {

struct FrameSize
{
    int width, height; ///< pixels
    /// Upper bound of one frame in bytes, raw or compressed.
    std::uint32_t byteLimit() const { return std::uint32_t(width) * height * 2 + 4096; }
};

/// What the camera says about itself; both stream formats offer all sizes.
struct CameraModel
{
    std::uint16_t vendor, product;
    std::string name;   ///< ASCII
    std::string serial; ///< ASCII
    std::vector<FrameSize> sizes;
};

/// Frame intervals in units of 100 ns: 30, 15 and 5 frames a second.
inline constexpr std::uint32_t frameIntervals[] = {333333, 666666, 2000000};

} // namespace lab
