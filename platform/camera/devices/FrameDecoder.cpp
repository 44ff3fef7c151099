#include "FrameDecoder.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>

namespace mirvak {
namespace {

size_t rowBytes(PixelFormat format, int width)
{
    const auto pixels = static_cast<size_t>(width);
    switch (format) {
    case PixelFormat::Yuyv:
    case PixelFormat::Y16:
        return 2 * pixels;
    case PixelFormat::Rgb24:
    case PixelFormat::Bgr24:
        return 3 * pixels;
    default:
        return pixels;
    }
}

bool hasChromaPlanes(PixelFormat format)
{
    return format == PixelFormat::Nv12 || format == PixelFormat::Yu12;
}

/// Bytes from the first pixel to the last one; the padding of the last row may be missing.
size_t bytesNeeded(const RawFrame& frame)
{
    const auto height = static_cast<size_t>(frame.height);
    const size_t row = rowBytes(frame.format, frame.width);
    if (!hasChromaPlanes(frame.format))
        return frame.stride * (height - 1) + row;
    const size_t luma = frame.stride * height;
    if (frame.format == PixelFormat::Nv12)
        return luma + frame.stride * (height / 2 - 1) + row;
    return luma + frame.stride / 2 * (height - 1) + row / 2;
}

bool isComplete(const RawFrame& frame)
{
    if (frame.width < 1 || frame.height < 1 || frame.stride < rowBytes(frame.format, frame.width))
        return false;
    const bool pairs = hasChromaPlanes(frame.format) || frame.format == PixelFormat::Yuyv;
    if (pairs && frame.width % 2 != 0)
        return false;
    if (hasChromaPlanes(frame.format) && frame.height % 2 != 0)
        return false;
    return frame.size >= bytesNeeded(frame);
}

/// The bytes of one plane as a matrix; nothing is copied or written.
cv::Mat view(const RawFrame& frame, int rows, int type)
{
    return {rows, frame.width, type, const_cast<uint8_t*>(frame.data), frame.stride};
}

} // namespace

bool FrameDecoder::decodeJpeg(const uint8_t* data, size_t byteCount, Image& image)
{
    return jpeg_.decode(data, byteCount, image.pixels);
}

bool FrameDecoder::decode(const RawFrame& frame, double share, Image& image)
{
    if (share >= 1.0)
        return decodeWhole(frame, image.pixels);
    if (!decodeWhole(frame, whole_))
        return false;
    const cv::Size part(std::max(1, static_cast<int>(std::lround(whole_.cols * share))),
                        std::max(1, static_cast<int>(std::lround(whole_.rows * share))));
    const cv::Rect centre(
        (whole_.cols - part.width) / 2, (whole_.rows - part.height) / 2, part.width, part.height);
    cv::resize(whole_(centre), image.pixels, whole_.size(), 0, 0, cv::INTER_LINEAR);
    return true;
}

bool FrameDecoder::decodeWhole(const RawFrame& frame, cv::Mat& rgb)
{
    if (frame.format == PixelFormat::Mjpeg) {
        return jpeg_.size(frame.data, frame.size) == cv::Size(frame.width, frame.height) &&
               jpeg_.decode(frame.data, frame.size, rgb);
    }
    if (!isComplete(frame))
        return false;
    switch (frame.format) {
    case PixelFormat::Yuyv:
        cv::cvtColor(view(frame, frame.height, CV_8UC2), rgb, cv::COLOR_YUV2RGB_YUYV);
        break;
    case PixelFormat::Rgb24:
        view(frame, frame.height, CV_8UC3).copyTo(rgb);
        break;
    case PixelFormat::Bgr24:
        cv::cvtColor(view(frame, frame.height, CV_8UC3), rgb, cv::COLOR_BGR2RGB);
        break;
    case PixelFormat::Grey:
        cv::cvtColor(view(frame, frame.height, CV_8UC1), rgb, cv::COLOR_GRAY2RGB);
        break;
    case PixelFormat::Y16:
        cv::extractChannel(view(frame, frame.height, CV_8UC2), planes_, 1); // the high byte
        cv::cvtColor(planes_, rgb, cv::COLOR_GRAY2RGB);
        break;
    default:
        return decodePlanar(frame, rgb);
    }
    return true;
}

bool FrameDecoder::decodePlanar(const RawFrame& frame, cv::Mat& rgb)
{
    // The converter wants all planes in one matrix without padding.
    const int width = frame.width;
    const int height = frame.height;
    planes_.create(height + height / 2, width, CV_8UC1);
    cv::Mat luma = planes_.rowRange(0, height);
    view(frame, height, CV_8UC1).copyTo(luma);
    const uint8_t* chroma = frame.data + frame.stride * static_cast<size_t>(height);
    uint8_t* packed = planes_.ptr(height);
    const bool interleaved = frame.format == PixelFormat::Nv12;
    const auto row = static_cast<size_t>(interleaved ? width : width / 2);
    const size_t step = interleaved ? frame.stride : frame.stride / 2;
    for (int y = 0; y < (interleaved ? height / 2 : height); ++y, packed += row, chroma += step)
        std::copy_n(chroma, row, packed);
    cv::cvtColor(planes_, rgb, interleaved ? cv::COLOR_YUV2RGB_NV12 : cv::COLOR_YUV2RGB_I420);
    return true;
}

} // namespace mirvak
