#include "JpegDecoder.h"

#include <turbojpeg.h>

#include <algorithm>
#include <cstdio>
#include <new>

namespace mirvak {
namespace {

// Cameras pad a frame to their packet size; further from the end nobody looks for the marker.
constexpr size_t paddingAtMost = 4096;

bool hasEndMarker(const uint8_t* data, size_t byteCount)
{
    const uint8_t* const end = data + byteCount;
    const uint8_t* const begin = end - std::min(byteCount, paddingAtMost);
    constexpr uint8_t endOfImage[] = {0xff, 0xd9};
    return std::find_end(begin, end, std::begin(endOfImage), std::end(endOfImage)) != end;
}

// A few spare bytes between the last block and the end marker are usual with cameras, and no pixel is lost.
// More of them mean that the decoder went astray in front of them.
bool isHarmless(const char* warning)
{
    constexpr unsigned spareBytesAtMost = 8;
    unsigned spareBytes = 0;
    unsigned marker = 0;
    const int fields = std::sscanf(
        warning, "Corrupt JPEG data: %u extraneous bytes before marker 0x%x", &spareBytes, &marker);
    return fields == 2 && marker == 0xd9 && spareBytes <= spareBytesAtMost;
}

} // namespace

void JpegDecoder::Close::operator()(void* handle) const
{
    tjDestroy(handle);
}

JpegDecoder::JpegDecoder()
{
    renew();
}

void JpegDecoder::renew()
{
    handle_.reset(tjInitDecompress());
    if (!handle_)
        throw std::bad_alloc();
}

std::optional<cv::Size> JpegDecoder::size(const uint8_t* data, size_t byteCount)
{
    int width = 0;
    int height = 0;
    int subsampling = 0;
    int colourSpace = 0;
    // The result is no help: a mere warning gives -1 too, and an error after a warning looks like one.
    tjDecompressHeader3(handle_.get(),
                        data,
                        static_cast<unsigned long>(byteCount),
                        &width,
                        &height,
                        &subsampling,
                        &colourSpace);
    if (width < 1 || height < 1) {
        renew(); // the codec stays in the middle of a header that it gave up
        return std::nullopt;
    }
    if (colourSpace == TJCS_CMYK || colourSpace == TJCS_YCCK)
        return std::nullopt;
    return cv::Size(width, height);
}

bool JpegDecoder::decode(const uint8_t* data, size_t byteCount, cv::Mat& rgb)
{
    const auto dimensions = size(data, byteCount);
    if (!dimensions)
        return false;
    rgb.create(*dimensions, CV_8UC3);
    return decompress(data, byteCount, rgb);
}

bool JpegDecoder::decodeReduced(const uint8_t* data, size_t byteCount, cv::Size atLeast, cv::Mat& rgb)
{
    const auto full = size(data, byteCount);
    if (!full)
        return false;
    cv::Size best = *full;
    for (const int eighths : {4, 2, 1}) {
        const tjscalingfactor factor{eighths, 8};
        const cv::Size reduced(TJSCALED(full->width, factor), TJSCALED(full->height, factor));
        if (reduced.width >= atLeast.width && reduced.height >= atLeast.height)
            best = reduced;
    }
    rgb.create(best, CV_8UC3);
    return decompress(data, byteCount, rgb);
}

bool JpegDecoder::decompress(const uint8_t* data, size_t byteCount, cv::Mat& rgb)
{
    if (!hasEndMarker(data, byteCount)) {
        mended_.assign(data, data + byteCount);
        mended_.insert(mended_.end(), {0xff, 0xd9});
        data = mended_.data();
        byteCount = mended_.size();
    }
    const int result = tjDecompress2(handle_.get(),
                                     data,
                                     static_cast<unsigned long>(byteCount),
                                     rgb.data,
                                     rgb.cols,
                                     static_cast<int>(rgb.step),
                                     rgb.rows,
                                     TJPF_RGB,
                                     TJFLAG_LIMITSCANS);
    if (result == 0 || isHarmless(tjGetErrorStr2(handle_.get())))
        return true;
    renew(); // broken tables must not serve the next frame
    return false;
}

} // namespace mirvak
