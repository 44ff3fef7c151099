#include "PngCodec.h"

#include "PngHeader.h"
#include "PngWriter.h"

#include <png.h>

namespace mirvak {

namespace {

// Deflate reaches 1032 to 1 at most, so a larger picture cannot be in the file.
constexpr std::int64_t maxExpansion = 1032;

struct PngImage
{
    png_image image{};
    PngImage() { image.version = PNG_IMAGE_VERSION; }
    ~PngImage() { png_image_free(&image); }
    PngImage(const PngImage&) = delete;
    PngImage& operator=(const PngImage&) = delete;
};

} // namespace

bool looksLikePng(const Bytes& bytes)
{
    return bytes.size() > 8 && png_sig_cmp(bytes.data(), 0, 8) == 0;
}

std::optional<Image> decodePng(const Bytes& bytes)
{
    const PngHeader header = readPngHeader(bytes);
    // The library's reader (1.6.39) repeats rows of interlaced pictures with 16 bits: no picture is better
    // than a wrong one.
    if (header.isInterlaced && header.bits == 16)
        return std::nullopt;
    PngImage png;
    if (!png_image_begin_read_from_memory(&png.image, bytes.data(), bytes.size()))
        return std::nullopt;
    const std::int64_t area = static_cast<std::int64_t>(png.image.width) * png.image.height;
    // One pixel takes at least one bit.
    if (area > maxPixels || area > static_cast<std::int64_t>(bytes.size()) * maxExpansion * 8)
        return std::nullopt;
    png.image.format = PNG_FORMAT_RGB;
    // Without a word about it the library takes 16 bits for linear light; scanners and editors mean sRGB.
    png.image.flags |= PNG_IMAGE_FLAG_16BIT_sRGB;
    Image image;
    image.pixels.create(static_cast<int>(png.image.height), static_cast<int>(png.image.width), CV_8UC3);
    const png_color white{255, 255, 255};
    if (!png_image_finish_read(
            &png.image, &white, image.pixels.data, static_cast<png_int_32>(image.pixels.step), nullptr))
        return std::nullopt;
    // The simple reading interface of the library does not tell the resolution.
    if (plausibleDpi(header.dpi))
        image.dpi = header.dpi;
    return image;
}

Bytes encodePng(const Image& image)
{
    return writePng(image.pixels, pngKindOf(image.pixels), image.dpi);
}

} // namespace mirvak
