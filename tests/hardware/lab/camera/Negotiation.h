#pragma once

#include "CameraModel.h"
#include "Setup.h"

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
    struct __attribute__((packed)) Proposal
    {
        std::uint16_t hint;
        std::uint8_t format, frame;
        std::uint32_t interval;
        std::uint16_t unused[5];
        std::uint32_t frameBytes, payloadBytes;
    } proposal_{};
};

} // namespace lab
