#include "YuvFrame.h"

#include <cstring>

namespace mirvak {

namespace {

constexpr int lastRows = 2; // as many as share their colours

} // namespace

YuvFrame::YuvFrame(const VideoFormat& format)
    : format_(format), frame_(needed(AvFramePtr(av_frame_alloc()))),
      scaler_(needed(ScalerPtr(sws_getContext(format.filmWidth(),
                                              format.filmHeight(),
                                              AV_PIX_FMT_RGB24,
                                              format.filmWidth(),
                                              format.filmHeight(),
                                              AV_PIX_FMT_YUV420P,
                                              SWS_BILINEAR,
                                              nullptr,
                                              nullptr,
                                              nullptr)))),
      lastRows_(size_t(format.width) * 3 * lastRows + AV_INPUT_BUFFER_PADDING_SIZE)
{
    frame_->format = AV_PIX_FMT_YUV420P;
    frame_->width = format.filmWidth();
    frame_->height = format.filmHeight();
    frame_->color_range = AVCOL_RANGE_MPEG;
    frame_->colorspace = AVCOL_SPC_BT709;
    if (av_frame_get_buffer(frame_.get(), 0) < 0)
        throw std::bad_alloc();
    const int* bt709 = sws_getCoefficients(SWS_CS_ITU709);
    constexpr int unchanged = 1 << 16;
    constexpr int fullRange = 1, limitedRange = 0;
    sws_setColorspaceDetails(scaler_.get(), bt709, fullRange, bt709, limitedRange, 0, unchanged, unchanged);
}

int YuvFrame::convert(const uint8_t* rgb)
{
    // The encoder may still hold the last picture; then this takes fresh memory.
    const int writable = av_frame_make_writable(frame_.get());
    if (writable < 0)
        return writable;
    const int body = format_.filmHeight() - lastRows;
    const size_t rowBytes = size_t(format_.width) * 3;
    scale(rgb, 0, body);
    // The scaler reads some bytes beyond a row; beyond the last one they are not the frame's.
    std::memcpy(lastRows_.data(), rgb + size_t(body) * rowBytes, rowBytes * lastRows);
    scale(lastRows_.data(), body, lastRows);
    return 0;
}

void YuvFrame::scale(const uint8_t* rgb, int firstRow, int rows)
{
    const uint8_t* planes[] = {rgb, nullptr, nullptr, nullptr};
    const int strides[] = {format_.width * 3, 0, 0, 0};
    sws_scale(scaler_.get(), planes, strides, firstRow, rows, frame_->data, frame_->linesize);
}

void YuvFrame::describeColours(AVCodecContext& encoder)
{
    encoder.pix_fmt = AV_PIX_FMT_YUV420P;
    encoder.color_range = AVCOL_RANGE_MPEG;
    encoder.colorspace = AVCOL_SPC_BT709;
    encoder.color_primaries = AVCOL_PRI_BT709;
    encoder.color_trc = AVCOL_TRC_BT709;
}

} // namespace mirvak
