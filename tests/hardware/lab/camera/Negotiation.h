#pragma once

#include "CameraModel.h"
#include "Setup.h"

#include <array>

namespace lab {

/// The stream that the host has asked for.
struct StreamChoice
{
    int format = 1;                             ///< 1 MJPEG, 2 YUYV
    int frameIndex = 0;                         ///< into CameraModel::sizes
    std::uint32_t interval = frameIntervals[0]; ///< 100 ns
};

/// The dialogue of the streaming interface: the host proposes a stream (probe), the camera corrects the
/// proposal, the host decides (commit).
class Negotiation
{
public:
    explicit Negotiation(const CameraModel& model);
    Answer request(const Setup& setup, const Bytes& data);
    /// True for the request after which choice() is to be streamed.
    static bool isCommit(const Setup& setup);
    StreamChoice choice() const;

private:
    void correct();

    const CameraModel& model_;
    std::array<std::uint8_t, 26> proposal_{};
};

} // namespace lab
