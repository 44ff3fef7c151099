#include "PngCodec.h"

#include "PngWriter.h"

#include <png.h>

#include <cstring>

namespace mirvak {

namespace {

constexpr double metrePerInch = 0.0254;
// Deflate reaches 1032 to 1 at most, so a larger picture cannot be in the file.
constexpr std::int64_t maxExpansion = 1032;

std::uint32_t bigEndian(const Bytes& bytes, size_t at)
{
    return static_cast<std::uint32_t>(bytes[at]) << 24 | static_cast<std::uint32_t>(bytes[at + 1]) << 16 |
           static_cast<std::uint32_t>(bytes[at + 2]) << 8 | bytes[at + 3];
}

// The simple reading interface of the library does not tell the resolution (chunk pHYs).
double readDpi(const Bytes& bytes)
{
    size_t at = 8; // behind the signature; a chunk is length, name, data, checksum
    while (at + 12 <= bytes.size()) {
        const std::uint32_t length = bigEndian(bytes, at);
        const char* name = reinterpret_cast<const char*>(bytes.data() + at + 4);
        if (std::memcmp(name, "pHYs", 4) == 0 && length == 9 && at + 21 <= bytes.size())
            return bytes[at + 16] == 1 ? bigEndian(bytes, at + 8) * metrePerInch : 0; // 1: pixels a metre
        if (std::memcmp(name, "IDAT", 4) == 0)
            break;
        at += 12ULL + length;
    }
    return 0;
}

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
    PngImage png;
    if (!png_image_begin_read_from_memory(&png.image, bytes.data(), bytes.size()))
        return std::nullopt;
    const std::int64_t area = static_cast<std::int64_t>(png.image.width) * png.image.height;
    // One pixel takes at least one bit.
    if (area > maxPixels || area > static_cast<std::int64_t>(bytes.size()) * maxExpansion * 8)
        return std::nullopt;
    png.image.format = PNG_FORMAT_RGB;
    Image image;
    image.pixels.create(static_cast<int>(png.image.height), static_cast<int>(png.image.width), CV_8UC3);
    const png_color white{255, 255, 255};
    if (!png_image_finish_read(
            &png.image, &white, image.pixels.data, static_cast<png_int_32>(image.pixels.step), nullptr))
        return std::nullopt;
    const double dpi = readDpi(bytes);
    if (plausibleDpi(dpi))
        image.dpi = dpi;
    return image;
}

Bytes encodePng(const Image& image)
{
    return writePng(image.pixels, pngKindOf(image.pixels), image.dpi);
}

} // namespace mirvak
