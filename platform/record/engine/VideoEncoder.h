#pragma once

#include "YuvFrame.h"

#include <functional>
#include <string>
#include <vector>

namespace mirvak {

/// One encoder of FFmpeg to try.
struct EncoderChoice
{
    std::string name;
    std::string preset; ///< empty for an encoder without presets
};

/// In the order in which they are tried: the chip's own where such chips are common, x264 at `superfast`,
/// OpenH264. `cheap` puts `ultrafast` in place of `superfast`: half the work, three times the file.
std::vector<EncoderChoice> encoderChoices(bool cheap);

/// H.264 with a key frame every second and without frames that refer to later ones, so that packets come in
/// the order in which they are shown.
class VideoEncoder
{
public:
    /// Takes the packets; times in units of the encoder's time base. Returns whether to go on.
    using Sink = std::function<bool(AVPacket& packet, const AVCodecContext& encoder)>;

    VideoEncoder(const VideoFormat& format, std::vector<EncoderChoice> choices, Sink sink);

    /// Opens the first encoder that can be opened. One that fails before its first packet, as a chip's may,
    /// is replaced by the next.
    bool open();
    /// False when the encoder failed or the sink has had enough.
    bool encode(const uint8_t* rgb, int64_t slot);
    bool repeat(int64_t slot); ///< the picture of the last encode()
    bool finish();             ///< hands out the last packets

    const std::string& name() const { return name_; }   ///< of the encoder in use
    const std::string& error() const { return error_; } ///< empty unless the encoder failed

private:
    bool tryOpen(const EncoderChoice& choice);
    bool sendPicture(int64_t slot);
    bool passPackets();
    bool fail(int error);

    VideoFormat format_;
    std::vector<EncoderChoice> choices_;
    size_t nextChoice_ = 0;
    Sink sink_;
    YuvFrame picture_;
    AvPacketPtr packet_;
    AvCodecPtr encoder_;
    std::string name_;
    std::string error_;
    int64_t keySecond_ = -1; ///< of the film, whose key frame has been asked for
    bool hasPackets_ = false;
};

} // namespace mirvak
