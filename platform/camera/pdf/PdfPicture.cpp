#include "PdfPicture.h"

#include "BmpCodec.h"
#include "Image.h"
#include "JpegCodec.h"
#include "JpegHeader.h"
#include "PngCodec.h"
#include "PngHeader.h"
#include "PngWriter.h"

#include <cstring>
#include <limits>
#include <stdexcept>
#include <utility>

namespace mirvak {

namespace {

constexpr int endMarker = 0xd9;

void setResolution(PdfPicture& picture, double dpi, double dpiDown)
{
    picture.dpi = plausibleDpi(dpi) ? dpi : cameraDpi;
    picture.dpiDown = plausibleDpi(dpi) && plausibleDpi(dpiDown) ? dpiDown : picture.dpi;
}

bool isSizePossible(std::int64_t width, std::int64_t height)
{
    constexpr std::int64_t most = std::numeric_limits<int>::max();
    return width > 0 && height > 0 && width <= most && height <= maxPixels / width;
}

/// Whether the picture's end mark stands behind its scans. Usually it is the last thing in the file; some
/// cameras append more.
bool hasEnd(const Bytes& jpeg, size_t scanAt)
{
    const size_t size = jpeg.size();
    if (jpeg[size - 2] == 0xff && jpeg[size - 1] == endMarker)
        return true;
    const std::uint8_t* end = jpeg.data() + size;
    for (const std::uint8_t* at = jpeg.data() + scanAt; at < end; ++at) {
        at = static_cast<const std::uint8_t*>(std::memchr(at, 0xff, static_cast<size_t>(end - at)));
        if (!at || at + 1 == end)
            return false;
        if (at[1] == endMarker)
            return true;
    }
    return false;
}

std::optional<PdfPicture> remade(const Bytes& file)
{
    const std::optional<Image> image = decodeImage(file);
    if (!image)
        return std::nullopt;
    PdfPicture picture;
    picture.coding = PdfPicture::Coding::remade;
    picture.width = image->pixels.cols;
    picture.height = image->pixels.rows;
    const PngKind kind = pngKindOf(image->pixels);
    picture.bits = kind == PngKind::blackWhite ? 1 : 8;
    picture.samples = kind == PngKind::colour ? 3 : 1;
    setResolution(picture, image->dpi, image->dpi);
    return picture;
}

/// What the format's own decoder knows: sequential and progressive Huffman coding of 8-bit samples.
bool isPlain(const JpegHeader& header)
{
    const bool isHuffman = header.coding >= 0 && header.coding <= 2;
    const bool isColoured = header.components == 1 || header.components == 3 || header.components == 4;
    return isHuffman && isColoured && header.bits == 8;
}

std::optional<PdfPicture> examineJpeg(const Bytes& file)
{
    const JpegHeader header = readJpegHeader(file);
    if (!isSizePossible(header.width, header.height) || header.scanAt == 0 || !hasEnd(file, header.scanAt))
        return std::nullopt;
    if (!isPlain(header))
        return remade(file);
    PdfPicture picture;
    picture.width = header.width;
    picture.height = header.height;
    picture.samples = header.components;
    picture.isInverted = header.components == 4 && header.adobe;
    picture.isPlainRgb = header.isPlainRgb;
    if (header.orientation >= 1 && header.orientation <= 8)
        picture.orientation = header.orientation;
    setResolution(picture, header.dpi, header.dpiDown);
    return picture;
}

std::optional<PdfPicture> examinePng(const Bytes& file)
{
    const PngHeader header = readPngHeader(file);
    if (!isSizePossible(header.width, header.height) || !header.isComplete || header.data.empty())
        return std::nullopt;
    if (header.isInterlaced || header.isTransparent)
        return remade(file);
    PdfPicture picture;
    picture.coding = PdfPicture::Coding::rows;
    picture.width = static_cast<int>(header.width);
    picture.height = static_cast<int>(header.height);
    picture.bits = header.bits;
    picture.samples = header.colourType == 2 ? 3 : 1;
    if (header.colourType == 3) {
        const auto* colours = file.data() + header.palette.at;
        picture.palette.assign(colours, colours + header.palette.length / 3 * 3);
        if (picture.palette.empty())
            return std::nullopt;
    }
    setResolution(picture, header.dpi, header.dpiDown);
    return picture;
}

/// Moves the compressed rows to the front of the file's own bytes.
Bytes rowsOf(Bytes png)
{
    const PngHeader header = readPngHeader(png);
    size_t size = 0;
    for (const PngHeader::Part& part : header.data) {
        std::memmove(png.data() + size, png.data() + part.at, part.length);
        size += part.length;
    }
    png.resize(size);
    return png;
}

Bytes remadeRows(Bytes file)
{
    std::optional<Image> image = decodeImage(file);
    file = Bytes();
    Bytes png = image ? encodePng(*image) : Bytes();
    image.reset();
    if (png.empty())
        throw std::runtime_error("the picture cannot be decoded");
    return rowsOf(std::move(png));
}

} // namespace

std::optional<PdfPicture> PdfPicture::examine(const Bytes& file)
{
    if (looksLikeJpeg(file))
        return examineJpeg(file);
    if (looksLikePng(file))
        return examinePng(file);
    return looksLikeBmp(file) ? remade(file) : std::nullopt;
}

PdfPicture PdfPicture::inRgb(const Bytes& file) const
{
    if (samples != 4)
        return *this;
    std::optional<PdfPicture> decoded = remade(file);
    if (!decoded)
        throw std::runtime_error("the picture cannot be decoded");
    decoded->dpi = dpi;
    decoded->dpiDown = dpiDown;
    if (orientation >= 5) // it is upright now
        std::swap(decoded->dpi, decoded->dpiDown);
    return *decoded;
}

Bytes PdfPicture::stream(Bytes file) const
{
    switch (coding) {
    case Coding::rows:
        return rowsOf(std::move(file));
    case Coding::remade:
        return remadeRows(std::move(file));
    default:
        return file;
    }
}

} // namespace mirvak
