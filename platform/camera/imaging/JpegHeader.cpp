#include "JpegHeader.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace mirvak {

namespace {

constexpr double inchPerCentimetre = 2.54;

/// Numbers of either byte order out of a range of bytes; outside of it everything is zero.
class ByteReader
{
public:
    ByteReader(const std::uint8_t* data, size_t size) : data_(data), size_(size) {}

    void setLittleEndian(bool little) { little_ = little; }
    bool startsWith(const char* text, size_t length) const
    {
        return size_ >= length && std::memcmp(data_, text, length) == 0;
    }
    std::uint32_t number(size_t at, int bytes) const
    {
        if (at > size_ || size_ - at < static_cast<size_t>(bytes))
            return 0;
        std::uint32_t value = 0;
        for (int i = 0; i < bytes; ++i)
            value = value << 8 | data_[at + static_cast<size_t>(little_ ? bytes - 1 - i : i)];
        return value;
    }
    ByteReader from(size_t at) const { return {data_ + std::min(at, size_), size_ - std::min(at, size_)}; }

private:
    const std::uint8_t* data_;
    size_t size_;
    bool little_ = false;
};

double rational(const ByteReader& tiff, size_t at)
{
    const double denominator = tiff.number(at + 4, 4);
    return denominator > 0 ? tiff.number(at, 4) / denominator : 0;
}

void readJfif(const ByteReader& segment, JpegHeader& header)
{
    const std::uint32_t unit = segment.number(7, 1);
    const double density = segment.number(8, 2);
    if (unit == 1)
        header.dpi = density;
    else if (unit == 2)
        header.dpi = density * inchPerCentimetre;
}

void readExif(const ByteReader& segment, JpegHeader& header)
{
    ByteReader tiff = segment.from(6);
    tiff.setLittleEndian(tiff.startsWith("II", 2));
    const size_t directory = tiff.number(4, 4);
    const std::uint32_t entries = tiff.number(directory, 2);
    double density = 0;
    std::uint32_t unit = 2; // inches unless said otherwise
    for (std::uint32_t i = 0; i < entries; ++i) {
        const size_t entry = directory + 2 + 12UL * i;
        switch (tiff.number(entry, 2)) {
        case 0x0112:
            header.orientation = static_cast<int>(tiff.number(entry + 8, 2));
            break;
        case 0x011a:
            density = rational(tiff, tiff.number(entry + 8, 4));
            break;
        case 0x0128:
            unit = tiff.number(entry + 8, 2);
            break;
        default:
            break;
        }
    }
    if (header.dpi == 0)
        header.dpi = unit == 3 ? density * inchPerCentimetre : density;
}

} // namespace

JpegHeader readJpegHeader(const Bytes& bytes)
{
    JpegHeader header;
    const ByteReader file(bytes.data(), bytes.size());
    size_t at = 2; // behind the start-of-image marker
    while (file.number(at, 1) == 0xff) {
        const std::uint32_t marker = file.number(at + 1, 1);
        const size_t length = file.number(at + 2, 2);
        if (marker == 0xda || length < 2 || at + 2 + length > bytes.size())
            break;
        const ByteReader segment(bytes.data() + at + 4, length - 2);
        if (marker == 0xe0 && segment.startsWith("JFIF", 5))
            readJfif(segment, header);
        else if (marker == 0xe1 && segment.startsWith("Exif", 5))
            readExif(segment, header);
        else if (marker == 0xee && segment.startsWith("Adobe", 5))
            header.adobe = true;
        at += 2 + length;
    }
    return header;
}

void setJfifDensity(Bytes& jpeg, double dpi)
{
    constexpr size_t unitAt = 13; // SOI, APP0, length, "JFIF\0", version
    if (jpeg.size() < unitAt + 5 || std::memcmp(jpeg.data() + 6, "JFIF", 5) != 0)
        return;
    const auto density = static_cast<std::uint16_t>(std::clamp(std::lround(dpi), 1L, 65535L));
    jpeg[unitAt] = 1; // dots per inch
    for (const size_t axis : {unitAt + 1, unitAt + 3}) {
        jpeg[axis] = static_cast<std::uint8_t>(density >> 8);
        jpeg[axis + 1] = static_cast<std::uint8_t>(density & 0xff);
    }
}

} // namespace mirvak
