#include "VideoEncoder.h"

#include <algorithm>
#include <thread>

namespace mirvak {

namespace {

// They yield to the preview's. More than four gain nothing at these sizes.
int threadCount()
{
    return std::clamp(static_cast<int>(std::thread::hardware_concurrency()), 1, 4);
}

// For encoders without a constant quality: 0.12 bits a pixel keep print readable.
int64_t bitRate(const VideoFormat& format)
{
    return int64_t(format.filmWidth()) * format.filmHeight() * format.framesPerSecond * 12 / 100;
}

void configure(AVCodecContext& encoder, const VideoFormat& format, const EncoderChoice& choice)
{
    encoder.width = format.filmWidth();
    encoder.height = format.filmHeight();
    encoder.time_base = {1, format.framesPerSecond};
    encoder.framerate = {format.framesPerSecond, 1};
    encoder.gop_size = format.framesPerSecond;
    encoder.max_b_frames = 0;
    encoder.thread_count = threadCount();
    YuvFrame::describeColours(encoder);
    if (choice.preset.empty()) {
        encoder.bit_rate = bitRate(format);
        return;
    }
    av_opt_set(encoder.priv_data, "preset", choice.preset.c_str(), 0);
    av_opt_set_int(encoder.priv_data, "crf", 24, 0);
    av_opt_set_int(encoder.priv_data, "forced-idr", 1, 0);
    av_opt_set(encoder.priv_data, "x264-params", "scenecut=0", 0);
}

} // namespace

std::vector<EncoderChoice> encoderChoices(bool cheap)
{
    std::vector<EncoderChoice> choices;
#if defined(__aarch64__) || defined(__arm__)
    choices.push_back({"h264_v4l2m2m", ""});
#endif
    choices.push_back({"libx264", cheap ? "ultrafast" : "superfast"});
    choices.push_back({"libopenh264", ""});
    return choices;
}

VideoEncoder::VideoEncoder(const VideoFormat& format, std::vector<EncoderChoice> choices, Sink sink)
    : format_(format), choices_(std::move(choices)), sink_(std::move(sink)), picture_(format),
      packet_(needed(AvPacketPtr(av_packet_alloc())))
{
}

bool VideoEncoder::open()
{
    while (nextChoice_ < choices_.size()) {
        if (tryOpen(choices_[nextChoice_++]))
            return true;
    }
    if (error_.empty())
        error_ = "no encoder";
    return false;
}

bool VideoEncoder::tryOpen(const EncoderChoice& choice)
{
    encoder_.reset();
    const AVCodec* codec = avcodec_find_encoder_by_name(choice.name.c_str());
    if (!codec)
        return false;
    encoder_ = needed(AvCodecPtr(avcodec_alloc_context3(codec)));
    configure(*encoder_, format_, choice);
    const int opened = avcodec_open2(encoder_.get(), codec, nullptr);
    if (opened < 0)
        return fail(opened);
    name_ = choice.preset.empty() ? choice.name : choice.name + " " + choice.preset;
    keySecond_ = -1;
    error_.clear();
    return true;
}

bool VideoEncoder::encode(const uint8_t* rgb, int64_t slot)
{
    const int converted = picture_.convert(rgb);
    return converted < 0 ? fail(converted) : repeat(slot);
}

bool VideoEncoder::repeat(int64_t slot)
{
    while (!sendPicture(slot)) {
        if (error_.empty() || hasPackets_ || !open())
            return false;
    }
    return true;
}

// A key frame at the begin of each second of the film, also where slots are left empty.
bool VideoEncoder::sendPicture(int64_t slot)
{
    const int64_t second = slot / format_.framesPerSecond;
    AVFrame& frame = picture_.get();
    frame.pts = slot;
    frame.pict_type = second > keySecond_ ? AV_PICTURE_TYPE_I : AV_PICTURE_TYPE_NONE;
    keySecond_ = second;
    const int sent = avcodec_send_frame(encoder_.get(), &frame);
    return sent < 0 ? fail(sent) : passPackets();
}

bool VideoEncoder::finish()
{
    const int sent = avcodec_send_frame(encoder_.get(), nullptr);
    return sent < 0 ? fail(sent) : passPackets();
}

bool VideoEncoder::passPackets()
{
    for (;;) {
        const int received = avcodec_receive_packet(encoder_.get(), packet_.get());
        if (received == AVERROR(EAGAIN) || received == AVERROR_EOF)
            return true;
        if (received < 0)
            return fail(received);
        hasPackets_ = true;
        const bool goesOn = sink_(*packet_, *encoder_);
        av_packet_unref(packet_.get());
        if (!goesOn)
            return false;
    }
}

bool VideoEncoder::fail(int error)
{
    error_ = avText(error);
    return false;
}

} // namespace mirvak
