#include "InvisibleFont.h"

#include <cstring>
#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

namespace mirvak::invisibleFont {

namespace {

// Big-endian, as all of the format (ISO/IEC 14496-22).
void put16(Bytes& to, int value)
{
    to.push_back(static_cast<std::uint8_t>(value >> 8));
    to.push_back(static_cast<std::uint8_t>(value));
}

void put32(Bytes& to, std::uint32_t value)
{
    put16(to, static_cast<int>(value >> 16));
    put16(to, static_cast<int>(value & 0xffff));
}

Bytes words(std::initializer_list<int> values)
{
    Bytes bytes;
    for (const int value : values)
        put16(bytes, value);
    return bytes;
}

constexpr std::uint32_t magic = 0x5f0f3cf5;
constexpr size_t adjustmentAt = 8; // of the head table
constexpr int widest = 1000;

Bytes headTable()
{
    Bytes table = words({1, 0, 1, 0}); // versions of the table and of the font
    put32(table, 0);                   // the adjustment of the checksum, which comes last
    put32(table, magic);
    const Bytes rest = words({0,
                              static_cast<int>(unitsPerEm),
                              0,
                              0,
                              0,
                              0, // made, as seconds of 64 bits: untold
                              0,
                              0,
                              0,
                              0, // changed
                              0,
                              0,
                              0,
                              0, // the box of all outlines
                              0,
                              8, // the smallest size that can be read
                              2,
                              0,
                              0});
    table.insert(table.end(), rest.begin(), rest.end());
    return table;
}

Bytes lineTable()
{
    return words({1,
                  0,
                  static_cast<int>(ascent),
                  static_cast<int>(descent),
                  0,
                  widest,
                  0,
                  0,
                  0, // bearings and extent
                  1,
                  0,
                  0,
                  0,
                  0,
                  0,
                  0,
                  0,
                  glyphs});
}

Bytes widthTable()
{
    Bytes table;
    for (const int width : widths) {
        put16(table, width);
        put16(table, 0);
    }
    return table;
}

// Some readers refuse a table without a byte: the missing glyph is a glyph of no contours.
Bytes outlineTable()
{
    return words({0, 0, 0, 0, 0, 0});
}

Bytes placeTable()
{
    Bytes table = words({0});
    for (int i = 0; i < glyphs; ++i)
        put16(table, static_cast<int>(outlineTable().size() / 2));
    return table;
}

Bytes limitTable()
{
    return words({1, 0, glyphs, 0, 0, 0, 0, 1, 0, 0, 0, 0, 0, 0, 0, 0});
}

std::uint32_t sumOf(const Bytes& bytes)
{
    std::uint32_t sum = 0;
    for (size_t i = 0; i < bytes.size(); ++i)
        sum += static_cast<std::uint32_t>(bytes[i]) << (24 - 8 * (i % 4));
    return sum;
}

void pad(Bytes& bytes)
{
    bytes.resize((bytes.size() + 3) / 4 * 4);
}

} // namespace

Bytes file()
{
    const std::vector<std::pair<const char*, Bytes>> tables{{"glyf", outlineTable()},
                                                            {"head", headTable()},
                                                            {"hhea", lineTable()},
                                                            {"hmtx", widthTable()},
                                                            {"loca", placeTable()},
                                                            {"maxp", limitTable()}};
    constexpr size_t entry = 16, header = 12;
    Bytes font;
    put32(font, 0x00010000);
    for (const int part : {static_cast<int>(tables.size()), 64, 2, 32}) // for a search by halves
        put16(font, part);
    Bytes body;
    size_t headAt = 0;
    for (const auto& [tag, table] : tables) {
        const size_t at = header + entry * tables.size() + body.size();
        if (std::strcmp(tag, "head") == 0)
            headAt = at;
        font.insert(font.end(), tag, tag + 4);
        put32(font, sumOf(table));
        put32(font, static_cast<std::uint32_t>(at));
        put32(font, static_cast<std::uint32_t>(table.size()));
        body.insert(body.end(), table.begin(), table.end());
        pad(body);
    }
    font.insert(font.end(), body.begin(), body.end());
    constexpr std::uint32_t wholeSum = 0xb1b0afba;
    Bytes adjustment;
    put32(adjustment, wholeSum - sumOf(font));
    std::copy(adjustment.begin(), adjustment.end(), font.begin() + static_cast<long>(headAt + adjustmentAt));
    return font;
}

} // namespace mirvak::invisibleFont
