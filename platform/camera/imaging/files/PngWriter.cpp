#include "PngWriter.h"

#include <png.h>
#include <zlib.h>

#include <algorithm>
#include <cmath>
#include <csetjmp>

namespace mirvak {

namespace {

constexpr double metrePerInch = 0.0254;

/// Owns the writing state of the library.
class Writer
{
public:
    Writer() : png_(png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, silent))
    {
        info_ = png_ ? png_create_info_struct(png_) : nullptr;
    }
    ~Writer() { png_destroy_write_struct(&png_, &info_); }
    Writer(const Writer&) = delete;
    Writer& operator=(const Writer&) = delete;

    bool isValid() const { return png_ && info_; }
    png_structp png() const { return png_; }
    png_infop info() const { return info_; }

private:
    static void silent(png_structp, png_const_charp) {}

    png_structp png_;
    png_infop info_ = nullptr;
};

void append(png_structp png, png_bytep data, size_t size)
{
    Bytes& out = *static_cast<Bytes*>(png_get_io_ptr(png));
    try {
        out.insert(out.end(), data, data + size);
        return;
    } catch (...) { // must not cross the library; its own error way is taken below
    }
    png_error(png, "out of memory");
}

void setHeader(const Writer& writer, const cv::Mat& rgb, PngKind kind, double dpi)
{
    const int depth = kind == PngKind::blackWhite ? 1 : 8;
    const int colour = kind == PngKind::colour ? PNG_COLOR_TYPE_RGB : PNG_COLOR_TYPE_GRAY;
    png_set_IHDR(writer.png(),
                 writer.info(),
                 static_cast<png_uint_32>(rgb.cols),
                 static_cast<png_uint_32>(rgb.rows),
                 depth,
                 colour,
                 PNG_INTERLACE_NONE,
                 PNG_COMPRESSION_TYPE_DEFAULT,
                 PNG_FILTER_TYPE_DEFAULT);
    const auto perMetre = static_cast<png_uint_32>(std::lround(dpi / metrePerInch));
    png_set_pHYs(writer.png(), writer.info(), perMetre, perMetre, PNG_RESOLUTION_METER);
}

// A photograph has no repetitions that a search would find: differences to the left neighbour and run lengths
// give nearly the size of the full search in a fraction of the time. Black and white pages do repeat.
void setCompression(png_structp png, PngKind kind)
{
    if (kind == PngKind::blackWhite) {
        png_set_filter(png, PNG_FILTER_TYPE_BASE, PNG_FILTER_NONE);
        png_set_compression_level(png, 6);
        return;
    }
    png_set_filter(png, PNG_FILTER_TYPE_BASE, PNG_FILTER_SUB);
    png_set_compression_level(png, 1);
    png_set_compression_strategy(png, Z_RLE);
}

void packBits(const std::uint8_t* rgb, int width, std::uint8_t* bits)
{
    std::fill(bits, bits + (width + 7) / 8, std::uint8_t{0});
    for (int x = 0; x < width; ++x) {
        if (rgb[3 * x])
            bits[x >> 3] |= static_cast<std::uint8_t>(0x80 >> (x & 7));
    }
}

void takeFirstChannel(const std::uint8_t* rgb, int width, std::uint8_t* grey)
{
    for (int x = 0; x < width; ++x)
        grey[x] = rgb[3 * x];
}

// Nothing in here may need a destructor: the library reports errors by jumping back into this function.
bool code(const Writer& writer, const cv::Mat& rgb, PngKind kind, double dpi, Bytes& row, Bytes& out)
{
    if (setjmp(png_jmpbuf(writer.png())))
        return false;
    png_set_write_fn(writer.png(), &out, append, nullptr);
    setHeader(writer, rgb, kind, dpi);
    setCompression(writer.png(), kind);
    png_write_info(writer.png(), writer.info());
    for (int y = 0; y < rgb.rows; ++y) {
        if (kind == PngKind::blackWhite)
            packBits(rgb.ptr(y), rgb.cols, row.data());
        else if (kind == PngKind::grey)
            takeFirstChannel(rgb.ptr(y), rgb.cols, row.data());
        png_write_row(writer.png(), kind == PngKind::colour ? rgb.ptr(y) : row.data());
    }
    png_write_end(writer.png(), nullptr);
    return true;
}

} // namespace

PngKind pngKindOf(const cv::Mat& rgb)
{
    bool blackWhite = true;
    for (int y = 0; y < rgb.rows; ++y) {
        const std::uint8_t* pixel = rgb.ptr(y);
        for (int x = 0; x < rgb.cols; ++x, pixel += 3) {
            if (pixel[0] != pixel[1] || pixel[0] != pixel[2])
                return PngKind::colour;
            blackWhite = blackWhite && (pixel[0] == 0 || pixel[0] == 255);
        }
    }
    return blackWhite ? PngKind::blackWhite : PngKind::grey;
}

Bytes writePng(const cv::Mat& rgb, PngKind kind, double dpi)
{
    const Writer writer;
    Bytes row(kind == PngKind::colour ? 0 : static_cast<size_t>(rgb.cols));
    Bytes out;
    if (!writer.isValid() || !code(writer, rgb, kind, dpi, row, out))
        out.clear();
    return out;
}

} // namespace mirvak
