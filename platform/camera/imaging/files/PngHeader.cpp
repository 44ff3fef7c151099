#include "PngHeader.h"

#include <zlib.h>

#include <cstring>

namespace mirvak {

namespace {

constexpr double metrePerInch = 0.0254;
constexpr size_t signatureSize = 8;
constexpr size_t chunkFrame = 12; // length and name before the data, checksum after them

std::uint32_t bigEndian(const Bytes& bytes, size_t at)
{
    return static_cast<std::uint32_t>(bytes[at]) << 24 | static_cast<std::uint32_t>(bytes[at + 1]) << 16 |
           static_cast<std::uint32_t>(bytes[at + 2]) << 8 | bytes[at + 3];
}

bool isNamed(const Bytes& bytes, size_t chunk, const char* name)
{
    return std::memcmp(bytes.data() + chunk + 4, name, 4) == 0;
}

void readImageHeader(const Bytes& bytes, size_t data, PngHeader& header)
{
    header.width = bigEndian(bytes, data);
    header.height = bigEndian(bytes, data + 4);
    header.bits = bytes[data + 8];
    header.colourType = bytes[data + 9];
    header.isInterlaced = bytes[data + 12] != 0;
    header.isTransparent = header.colourType == 4 || header.colourType == 6;
}

void readChunk(const Bytes& bytes, size_t chunk, size_t length, PngHeader& header)
{
    const size_t data = chunk + 8;
    if (isNamed(bytes, chunk, "IHDR") && length == 13)
        readImageHeader(bytes, data, header);
    else if (isNamed(bytes, chunk, "PLTE"))
        header.palette = {data, length};
    else if (isNamed(bytes, chunk, "tRNS"))
        header.isTransparent = true;
    else if (isNamed(bytes, chunk, "IDAT"))
        header.data.push_back({data, length});
    else if (isNamed(bytes, chunk, "pHYs") && length == 9 && bytes[data + 8] == 1) { // 1: pixels a metre
        header.dpi = bigEndian(bytes, data) * metrePerInch;
        header.dpiDown = bigEndian(bytes, data + 4) * metrePerInch;
    }
}

} // namespace

PngHeader readPngHeader(const Bytes& bytes)
{
    PngHeader header;
    size_t at = signatureSize;
    while (at + chunkFrame <= bytes.size()) {
        const size_t length = bigEndian(bytes, at);
        if (length > bytes.size() - at - chunkFrame)
            break;
        const auto checked = static_cast<uInt>(length + 4);
        if (crc32(0, bytes.data() + at + 4, checked) != bigEndian(bytes, at + 8 + length))
            break;
        readChunk(bytes, at, length, header);
        if (isNamed(bytes, at, "IEND")) {
            header.isComplete = true;
            break;
        }
        at += chunkFrame + length;
    }
    return header;
}

} // namespace mirvak
