#include "OddPictures.h"

#include <opencv2/core.hpp>
#include <png.h>

#include <cstdlib>
#include <stdexcept>

namespace odd {

using mirvak::Bytes;

mirvak::Bytes jpeg(const cv::Mat& pixels, const JpegKind& kind)
{
    jpeg_compress_struct coder{};
    jpeg_error_mgr errors{};
    coder.err = jpeg_std_error(&errors);
    jpeg_create_compress(&coder);
    unsigned char* bytes = nullptr;
    unsigned long size = 0;
    jpeg_mem_dest(&coder, &bytes, &size);
    coder.image_width = static_cast<JDIMENSION>(pixels.cols);
    coder.image_height = static_cast<JDIMENSION>(pixels.rows);
    coder.input_components = pixels.channels();
    coder.in_color_space = kind.pixels;
    jpeg_set_defaults(&coder);
    jpeg_set_colorspace(&coder, kind.stored);
    jpeg_set_quality(&coder, 95, TRUE);
    coder.write_JFIF_header = coder.write_JFIF_header && kind.jfif;
    coder.write_Adobe_marker = coder.write_Adobe_marker && kind.adobe;
    coder.arith_code = kind.arithmetic;
    coder.density_unit = 1;
    coder.X_density = static_cast<UINT16>(kind.dpiAcross);
    coder.Y_density = static_cast<UINT16>(kind.dpiDown);
    if (kind.progressive)
        jpeg_simple_progression(&coder);
    jpeg_start_compress(&coder, TRUE);
    for (int y = 0; y < pixels.rows; ++y) {
        auto* row = const_cast<JSAMPROW>(pixels.ptr(y));
        jpeg_write_scanlines(&coder, &row, 1);
    }
    jpeg_finish_compress(&coder);
    jpeg_destroy_compress(&coder);
    Bytes file(bytes, bytes + size);
    std::free(bytes);
    return file;
}

namespace {

void append(png_structp png, png_bytep data, size_t size)
{
    auto& out = *static_cast<Bytes*>(png_get_io_ptr(png));
    out.insert(out.end(), data, data + size);
}

/// One unpacked row, a byte or two for each sample; the library packs it.
Bytes rowOf(const cv::Mat& pixels, int y, const PngKind& kind)
{
    Bytes row;
    const auto put = [&](int value) {
        row.push_back(static_cast<std::uint8_t>(kind.bits < 8 ? value >> (8 - kind.bits) : value));
        if (kind.bits == 16)
            row.push_back(static_cast<std::uint8_t>(value));
    };
    for (int x = 0; x < pixels.cols; ++x) {
        const auto& pixel = pixels.at<cv::Vec3b>(y, x);
        const bool isColour = (kind.colourType & 3) == 2;
        for (int c = 0; c < (isColour ? 3 : 1); ++c)
            put(pixel[c]);
        if (kind.colourType >= 4)
            put(pixel[0] ? 255 : 0);
    }
    return row;
}

void setPalette(png_structp png, png_infop info, int bits)
{
    std::vector<png_color> colours(size_t{1} << bits);
    for (size_t i = 0; i < colours.size(); ++i) {
        const auto value = static_cast<png_byte>(i << (8 - bits));
        colours[i] = {value, value, static_cast<png_byte>(255 - value)};
    }
    png_set_PLTE(png, info, colours.data(), static_cast<int>(colours.size()));
}

} // namespace

mirvak::Bytes png(const cv::Mat& pixels, const PngKind& kind)
{
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    Bytes file;
    png_set_write_fn(png, &file, append, nullptr);
    png_set_IHDR(png,
                 info,
                 static_cast<png_uint_32>(pixels.cols),
                 static_cast<png_uint_32>(pixels.rows),
                 kind.bits,
                 kind.colourType,
                 kind.interlaced ? PNG_INTERLACE_ADAM7 : PNG_INTERLACE_NONE,
                 PNG_COMPRESSION_TYPE_DEFAULT,
                 PNG_FILTER_TYPE_DEFAULT);
    png_set_pHYs(png, info, 2835, 2835, PNG_RESOLUTION_METER); // 72 dpi: one pixel a point
    png_set_compression_buffer_size(png, 40);                  // many small chunks
    if (kind.colourType == PNG_COLOR_TYPE_PALETTE)
        setPalette(png, info, kind.bits);
    png_write_info(png, info);
    png_set_packing(png);
    std::vector<Bytes> rows;
    std::vector<png_bytep> pointers;
    for (int y = 0; y < pixels.rows; ++y)
        rows.push_back(rowOf(pixels, y, kind));
    for (Bytes& row : rows)
        pointers.push_back(row.data());
    png_write_image(png, pointers.data());
    png_write_end(png, nullptr);
    png_destroy_write_struct(&png, &info);
    return file;
}

} // namespace odd
