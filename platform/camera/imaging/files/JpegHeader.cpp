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

/// What decides how three components are meant, by the rules of the IJG's decoder.
struct ColourMarks
{
    bool jfif = false;
    int adobeTransform = -1; // -1: no such segment
    bool idsAreRgb = false;
};

void readJfif(const ByteReader& segment, JpegHeader& header)
{
    const std::uint32_t unit = segment.number(7, 1);
    if (unit != 1 && unit != 2)
        return;
    const double perInch = unit == 2 ? inchPerCentimetre : 1;
    header.dpi = segment.number(8, 2) * perInch;
    header.dpiDown = segment.number(10, 2) * perInch;
}

void readExif(const ByteReader& segment, JpegHeader& header)
{
    ByteReader tiff = segment.from(6);
    tiff.setLittleEndian(tiff.startsWith("II", 2));
    const size_t directory = tiff.number(4, 4);
    const std::uint32_t entries = tiff.number(directory, 2);
    double across = 0, down = 0;
    std::uint32_t unit = 2; // inches unless said otherwise
    for (std::uint32_t i = 0; i < entries; ++i) {
        const size_t entry = directory + 2 + 12UL * i;
        switch (tiff.number(entry, 2)) {
        case 0x0112:
            header.orientation = static_cast<int>(tiff.number(entry + 8, 2));
            break;
        case 0x011a:
            across = rational(tiff, tiff.number(entry + 8, 4));
            break;
        case 0x011b:
            down = rational(tiff, tiff.number(entry + 8, 4));
            break;
        case 0x0128:
            unit = tiff.number(entry + 8, 2);
            break;
        default:
            break;
        }
    }
    if (header.dpi != 0)
        return;
    header.dpi = unit == 3 ? across * inchPerCentimetre : across;
    header.dpiDown = unit == 3 ? down * inchPerCentimetre : down;
}

void readFrame(const ByteReader& segment, std::uint32_t marker, JpegHeader& header, ColourMarks& marks)
{
    header.coding = static_cast<int>(marker & 0x0fU);
    header.bits = static_cast<int>(segment.number(0, 1));
    header.height = static_cast<int>(segment.number(1, 2));
    header.width = static_cast<int>(segment.number(3, 2));
    header.components = static_cast<int>(segment.number(5, 1));
    marks.idsAreRgb =
        segment.number(6, 1) == 'R' && segment.number(9, 1) == 'G' && segment.number(12, 1) == 'B';
}

bool isFrame(std::uint32_t marker)
{
    // In between stand the tables of codes, a reserved marker and the arithmetic coder's conditions.
    return marker >= 0xc0 && marker <= 0xcf && marker != 0xc4 && marker != 0xc8 && marker != 0xcc;
}

void readSegment(const ByteReader& segment, std::uint32_t marker, JpegHeader& header, ColourMarks& marks)
{
    if (isFrame(marker))
        return readFrame(segment, marker, header, marks);
    if (marker == 0xe0 && segment.startsWith("JFIF", 5)) {
        readJfif(segment, header);
        marks.jfif = true;
    } else if (marker == 0xe1 && segment.startsWith("Exif", 5)) {
        readExif(segment, header);
    } else if (marker == 0xee && segment.startsWith("Adobe", 5)) {
        header.adobe = true;
        marks.adobeTransform = static_cast<int>(segment.number(11, 1));
    }
}

} // namespace

JpegHeader readJpegHeader(const Bytes& bytes)
{
    JpegHeader header;
    ColourMarks marks;
    const ByteReader file(bytes.data(), bytes.size());
    size_t at = 2; // behind the start-of-image marker
    while (file.number(at, 1) == 0xff) {
        const std::uint32_t marker = file.number(at + 1, 1);
        if (marker == 0xff) { // padding
            ++at;
            continue;
        }
        const size_t length = file.number(at + 2, 2);
        if (length < 2 || at + 2 + length > bytes.size())
            break;
        if (marker == 0xda) {
            header.scanAt = at;
            break;
        }
        readSegment(ByteReader(bytes.data() + at + 4, length - 2), marker, header, marks);
        at += 2 + length;
    }
    const bool saysRgb = marks.adobeTransform >= 0 ? marks.adobeTransform == 0 : marks.idsAreRgb;
    header.isPlainRgb = header.components == 3 && !marks.jfif && saysRgb;
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
