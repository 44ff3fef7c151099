// FFmpeg's objects, each with its release.
#pragma once

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavcodec/bsf.h>
#include <libavformat/avformat.h>
#include <libavutil/opt.h>
#include <libswscale/swscale.h>
}

#include <memory>
#include <string>

namespace mirvak {

/// For releases that take the address of the handle.
template <auto Free> struct AvFree
{
    template <class T> void operator()(T* handle) const noexcept { Free(&handle); }
};

struct OutputFree
{
    void operator()(AVFormatContext* output) const noexcept { avformat_free_context(output); }
};
struct ScalerFree
{
    void operator()(SwsContext* scaler) const noexcept { sws_freeContext(scaler); }
};
/// An AVIOContext with callbacks: its buffer may have been exchanged for another.
struct CallbackIoFree
{
    void operator()(AVIOContext* io) const noexcept
    {
        av_freep(&io->buffer);
        avio_context_free(&io);
    }
};
struct FileIoFree
{
    void operator()(AVIOContext* io) const noexcept { avio_close(io); }
};

using AvFramePtr = std::unique_ptr<AVFrame, AvFree<&av_frame_free>>;
using AvPacketPtr = std::unique_ptr<AVPacket, AvFree<&av_packet_free>>;
using AvCodecPtr = std::unique_ptr<AVCodecContext, AvFree<&avcodec_free_context>>;
using AvFilterPtr = std::unique_ptr<AVBSFContext, AvFree<&av_bsf_free>>;
using AvInputPtr = std::unique_ptr<AVFormatContext, AvFree<&avformat_close_input>>;
using AvOutputPtr = std::unique_ptr<AVFormatContext, OutputFree>;
using AvCallbackIoPtr = std::unique_ptr<AVIOContext, CallbackIoFree>;
using AvFileIoPtr = std::unique_ptr<AVIOContext, FileIoFree>;
using ScalerPtr = std::unique_ptr<SwsContext, ScalerFree>;

/// Throws std::bad_alloc when FFmpeg could not allocate it.
template <class Handle> Handle needed(Handle handle)
{
    if (!handle)
        throw std::bad_alloc();
    return handle;
}

/// FFmpeg's words for its negative result.
std::string avText(int error);

} // namespace mirvak
