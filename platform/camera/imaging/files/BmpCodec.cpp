#include "BmpCodec.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <limits>

namespace mirvak {

namespace {

constexpr double metrePerInch = 0.0254;
constexpr size_t fileHeaderSize = 14;
constexpr size_t infoHeaderSize = 40;

std::uint32_t littleEndian(const Bytes& bytes, size_t at, int count)
{
    std::uint32_t value = 0;
    for (int i = count - 1; i >= 0; --i)
        value = value << 8 |
                (at + static_cast<size_t>(i) < bytes.size() ? bytes[at + static_cast<size_t>(i)] : 0);
    return value;
}

void put(Bytes& bytes, size_t at, std::uint32_t value, int count)
{
    for (int i = 0; i < count; ++i)
        bytes[at + static_cast<size_t>(i)] = static_cast<std::uint8_t>(value >> (8 * i));
}

struct Layout
{
    std::int64_t width = 0, height = 0;
    bool topDown = false;
    int bits = 0;
    size_t pixelsAt = 0, paletteAt = 0, paletteEntry = 4, paletteSize = 0, stride = 0;
    std::array<std::uint32_t, 3> masks{}; ///< red, green, blue of 16 and 32 bits a pixel
    double dpi = 0;
};

// Also the first half of the larger headers of later versions.
void readInfoHeader(const Bytes& bytes, size_t headerSize, Layout& layout, std::uint32_t& compression)
{
    layout.width = static_cast<std::int32_t>(littleEndian(bytes, 18, 4));
    layout.height = static_cast<std::int32_t>(littleEndian(bytes, 22, 4));
    layout.bits = static_cast<int>(littleEndian(bytes, 28, 2));
    compression = littleEndian(bytes, 30, 4);
    layout.dpi = littleEndian(bytes, 38, 4) * metrePerInch;
    layout.paletteSize = littleEndian(bytes, 46, 4);
    layout.paletteAt = fileHeaderSize + headerSize;
    if (compression == 3) {
        for (size_t c = 0; c < 3; ++c)
            layout.masks[c] = littleEndian(bytes, 54 + 4 * c, 4);
    }
}

// The twelve-byte header of OS/2 1.x.
void readCoreHeader(const Bytes& bytes, Layout& layout)
{
    layout.width = littleEndian(bytes, 18, 2);
    layout.height = littleEndian(bytes, 20, 2);
    layout.bits = static_cast<int>(littleEndian(bytes, 24, 2));
    layout.paletteEntry = 3;
    layout.paletteAt = fileHeaderSize + 12;
}

bool supported(int bits, std::uint32_t compression)
{
    const bool masked = bits == 16 || bits == 32;
    const bool plain = masked || bits == 1 || bits == 4 || bits == 8 || bits == 24;
    return (compression == 0 && plain) || (compression == 3 && masked);
}

std::optional<Layout> readLayout(const Bytes& bytes)
{
    const size_t headerSize = littleEndian(bytes, 14, 4);
    Layout layout;
    std::uint32_t compression = 0;
    if (headerSize == 12)
        readCoreHeader(bytes, layout);
    else if (headerSize >= infoHeaderSize && headerSize < bytes.size())
        readInfoHeader(bytes, headerSize, layout, compression);
    layout.topDown = layout.height < 0;
    layout.height = std::abs(layout.height);
    layout.pixelsAt = littleEndian(bytes, 10, 4);
    if (!supported(layout.bits, compression) || layout.width <= 0 || layout.height == 0 ||
        layout.width > maxPixels / layout.height)
        return std::nullopt;
    if (compression == 0 && layout.bits == 16)
        layout.masks = {0x7c00, 0x03e0, 0x001f};
    else if (compression == 0)
        layout.masks = {0xff0000, 0x00ff00, 0x0000ff};
    layout.stride = (static_cast<size_t>(layout.width) * static_cast<size_t>(layout.bits) + 31) / 32 * 4;
    // Checked before any memory is taken: a forged size must have the bytes to go with it.
    const size_t needed = layout.stride * static_cast<size_t>(layout.height);
    if (layout.pixelsAt > bytes.size() || bytes.size() - layout.pixelsAt < needed)
        return std::nullopt;
    return layout;
}

using Colour = std::array<std::uint8_t, 3>;

std::vector<Colour> readPalette(const Bytes& bytes, const Layout& layout)
{
    const size_t most = size_t{1} << layout.bits;
    const size_t size = layout.paletteSize ? std::min(layout.paletteSize, most) : most;
    std::vector<Colour> palette(most, Colour{0, 0, 0});
    for (size_t i = 0; i < size; ++i) {
        const std::uint32_t bgr = littleEndian(bytes, layout.paletteAt + i * layout.paletteEntry, 3);
        palette[i] = {static_cast<std::uint8_t>(bgr >> 16),
                      static_cast<std::uint8_t>(bgr >> 8),
                      static_cast<std::uint8_t>(bgr)};
    }
    return palette;
}

void readIndexedRow(
    const std::uint8_t* in, const std::vector<Colour>& palette, int bits, int width, std::uint8_t* out)
{
    const int mask = (1 << bits) - 1;
    for (int x = 0; x < width; ++x, out += 3) {
        const int bit = x * bits;
        const int index = in[bit >> 3] >> (8 - bits - (bit & 7)) & mask;
        std::copy_n(palette[static_cast<size_t>(index)].data(), 3, out);
    }
}

std::uint8_t field(std::uint32_t value, std::uint32_t mask)
{
    if (mask == 0)
        return 0;
    const int shift = __builtin_ctz(mask);
    return static_cast<std::uint8_t>(255ULL * ((value & mask) >> shift) / (mask >> shift));
}

void readMaskedRow(const std::uint8_t* in, const Layout& layout, std::uint8_t* out)
{
    const int step = layout.bits / 8;
    for (int x = 0; x < layout.width; ++x, in += step) {
        std::uint32_t value = 0;
        for (int i = step - 1; i >= 0; --i)
            value = value << 8 | in[i];
        for (const std::uint32_t mask : layout.masks)
            *out++ = field(value, mask);
    }
}

} // namespace

bool looksLikeBmp(const Bytes& bytes)
{
    return bytes.size() > fileHeaderSize + 12 && bytes[0] == 'B' && bytes[1] == 'M';
}

std::optional<Image> decodeBmp(const Bytes& bytes)
{
    const std::optional<Layout> layout = readLayout(bytes);
    if (!layout)
        return std::nullopt;
    Image image;
    const int width = static_cast<int>(layout->width), height = static_cast<int>(layout->height);
    image.pixels.create(height, width, CV_8UC3);
    const std::vector<Colour> palette =
        layout->bits <= 8 ? readPalette(bytes, *layout) : std::vector<Colour>();
    for (int y = 0; y < height; ++y) {
        const std::uint8_t* in = bytes.data() + layout->pixelsAt + layout->stride * static_cast<size_t>(y);
        std::uint8_t* out = image.pixels.ptr(layout->topDown ? y : height - 1 - y);
        if (layout->bits <= 8)
            readIndexedRow(in, palette, layout->bits, width, out);
        else if (layout->bits == 24)
            for (int x = 0; x < width; ++x, in += 3, out += 3)
                std::reverse_copy(in, in + 3, out);
        else
            readMaskedRow(in, *layout, out);
    }
    if (plausibleDpi(layout->dpi))
        image.dpi = layout->dpi;
    return image;
}

Bytes encodeBmp(const Image& image)
{
    const cv::Mat& pixels = image.pixels;
    const size_t stride = (static_cast<size_t>(pixels.cols) * 3 + 3) / 4 * 4;
    const size_t size = fileHeaderSize + infoHeaderSize + stride * static_cast<size_t>(pixels.rows);
    if (size > std::numeric_limits<std::uint32_t>::max())
        return {};
    Bytes bmp(size);
    const auto perMetre = static_cast<std::uint32_t>(std::lround(image.dpi / metrePerInch));
    put(bmp, 0, 'B' | 'M' << 8, 2);
    put(bmp, 2, static_cast<std::uint32_t>(size), 4);
    put(bmp, 10, fileHeaderSize + infoHeaderSize, 4);
    put(bmp, 14, infoHeaderSize, 4);
    put(bmp, 18, static_cast<std::uint32_t>(pixels.cols), 4);
    put(bmp, 22, static_cast<std::uint32_t>(pixels.rows), 4);
    put(bmp, 26, 1, 2); // planes
    put(bmp, 28, 24, 2);
    put(bmp, 38, perMetre, 4);
    put(bmp, 42, perMetre, 4);
    for (int y = 0; y < pixels.rows; ++y) {
        std::uint8_t* out = bmp.data() + size - stride * static_cast<size_t>(y + 1);
        cv::Mat row(1, pixels.cols, CV_8UC3, out);
        cv::cvtColor(pixels.row(y), row, cv::COLOR_RGB2BGR);
    }
    return bmp;
}

} // namespace mirvak
