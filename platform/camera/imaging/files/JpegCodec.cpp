#include "JpegCodec.h"

#include "JpegHeader.h"

#include <opencv2/imgproc.hpp>
#include <turbojpeg.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <memory>

namespace mirvak {

namespace {

struct DestroyTurbo
{
    void operator()(void* handle) const noexcept { tjDestroy(handle); }
};
using Turbo = std::unique_ptr<void, DestroyTurbo>;

// The cameras deliver 4:2:2 at best, so this keeps all the colour there is: red seals and coloured print stay
// sharp across the strokes, where 4:2:0 smears them, for about a tenth more bytes. Black text is untouched by
// either, and 4:4:4 would only store interpolated colour.
constexpr TJSAMP subsampling = TJSAMP_422;

// No valid file has more pixels a byte: one bit for each 8 x 8 block at least.
constexpr std::int64_t maxPixelsPerByte = 8 * 64;

// Junk between segments is harmless; every other warning means lost or broken image data.
bool pixelsAreWhole(tjhandle turbo)
{
    return tjGetErrorCode(turbo) == TJERR_WARNING && std::strstr(tjGetErrorStr2(turbo), "extraneous");
}

bool decodeInto(tjhandle turbo, const Bytes& bytes, cv::Mat& pixels, int format)
{
    const int result = tjDecompress2(turbo,
                                     bytes.data(),
                                     bytes.size(),
                                     pixels.data,
                                     pixels.cols,
                                     static_cast<int>(pixels.step),
                                     pixels.rows,
                                     format,
                                     0);
    return result == 0 || pixelsAreWhole(turbo);
}

// Ink shares to light: red is what cyan and black leave over.
cv::Mat rgbFromCmyk(const cv::Mat& cmyk, bool inverted)
{
    cv::Mat rgb(cmyk.size(), CV_8UC3);
    for (int y = 0; y < cmyk.rows; ++y) {
        const std::uint8_t* in = cmyk.ptr(y);
        std::uint8_t* out = rgb.ptr(y);
        for (int x = 0; x < cmyk.cols; ++x, in += 4, out += 3) {
            const int flip = inverted ? 0 : 255;
            for (int c = 0; c < 3; ++c)
                out[c] = static_cast<std::uint8_t>((in[c] ^ flip) * (in[3] ^ flip) / 255);
        }
    }
    return rgb;
}

} // namespace

void applyOrientation(cv::Mat& pixels, int orientation)
{
    if (orientation >= 5 && orientation <= 8)
        cv::transpose(pixels, pixels);
    switch (orientation) {
    case 2:
    case 6:
        cv::flip(pixels, pixels, 1);
        break;
    case 3:
    case 7:
        cv::flip(pixels, pixels, -1);
        break;
    case 4:
    case 8:
        cv::flip(pixels, pixels, 0);
        break;
    default:
        break;
    }
}

bool looksLikeJpeg(const Bytes& bytes)
{
    return bytes.size() > 3 && bytes[0] == 0xff && bytes[1] == 0xd8 && bytes[2] == 0xff;
}

std::optional<Image> decodeJpeg(const Bytes& bytes)
{
    const Turbo turbo(tjInitDecompress());
    int width = 0, height = 0, sampling = 0, colours = 0;
    if (!turbo || tjDecompressHeader3(
                      turbo.get(), bytes.data(), bytes.size(), &width, &height, &sampling, &colours) != 0)
        return std::nullopt;
    const std::int64_t area = static_cast<std::int64_t>(width) * height;
    if (area > maxPixels || area > static_cast<std::int64_t>(bytes.size()) * maxPixelsPerByte)
        return std::nullopt;

    const JpegHeader header = readJpegHeader(bytes);
    const bool cmyk = colours == TJCS_CMYK || colours == TJCS_YCCK;
    Image image;
    image.pixels.create(height, width, cmyk ? CV_8UC4 : CV_8UC3);
    if (!decodeInto(turbo.get(), bytes, image.pixels, cmyk ? TJPF_CMYK : TJPF_RGB))
        return std::nullopt;
    if (cmyk)
        image.pixels = rgbFromCmyk(image.pixels, header.adobe);
    applyOrientation(image.pixels, header.orientation);
    if (plausibleDpi(header.dpi))
        image.dpi = header.dpi;
    return image;
}

Bytes turnJpeg(const Bytes& bytes, int quarters)
{
    constexpr std::array<int, 4> operations{TJXOP_NONE, TJXOP_ROT90, TJXOP_ROT180, TJXOP_ROT270};
    const Turbo turbo(tjInitTransform());
    const JpegHeader header = readJpegHeader(bytes);
    if (!turbo || !looksLikeJpeg(bytes) || header.orientation != 1 || header.dpi != header.dpiDown)
        return {};
    tjtransform turn{};
    turn.op = operations[static_cast<size_t>(quarters & 3)];
    turn.options = TJXOPT_PERFECT;
    unsigned char* out = nullptr;
    unsigned long size = 0;
    const int result = tjTransform(turbo.get(), bytes.data(), bytes.size(), 1, &out, &size, &turn, 0);
    const std::unique_ptr<unsigned char, decltype(&tjFree)> owned(out, &tjFree);
    return result == 0 ? Bytes(out, out + size) : Bytes();
}

Bytes encodeJpeg(const Image& image, int quality)
{
    const cv::Mat& pixels = image.pixels;
    const Turbo turbo(tjInitCompress());
    unsigned long size = tjBufSize(pixels.cols, pixels.rows, subsampling);
    if (!turbo || size == static_cast<unsigned long>(-1))
        return {};
    // The bound is a dozen times the usual size. Left uninitialised, only the pages that are used cost
    // memory.
    const std::unique_ptr<unsigned char[]> buffer(new unsigned char[size]);
    unsigned char* out = buffer.get();
    const int result = tjCompress2(turbo.get(),
                                   pixels.data,
                                   pixels.cols,
                                   static_cast<int>(pixels.step),
                                   pixels.rows,
                                   TJPF_RGB,
                                   &out,
                                   &size,
                                   subsampling,
                                   std::clamp(quality, 1, 100),
                                   TJFLAG_NOREALLOC);
    if (result != 0)
        return {};
    Bytes jpeg(out, out + size);
    setJfifDensity(jpeg, image.dpi);
    return jpeg;
}

} // namespace mirvak
