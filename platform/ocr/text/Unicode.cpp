#include "Unicode.h"

#include <cstdint>

namespace mirvak {

namespace {

constexpr char32_t replacement = 0xfffd;

bool within(char32_t c, char32_t first, char32_t last)
{
    return c >= first && c <= last;
}

// Bytes that a lead byte announces, itself included; 0 for one that leads nothing.
int lengthOf(std::uint8_t lead)
{
    if (lead < 0x80)
        return 1;
    if (lead >= 0xc2 && lead < 0xe0)
        return 2;
    if (lead >= 0xe0 && lead < 0xf0)
        return 3;
    return lead >= 0xf0 && lead < 0xf5 ? 4 : 0;
}

// Forms that are longer than needed, halves of surrogate pairs and what lies beyond the last plane.
bool isForbidden(char32_t c, int length)
{
    return (length == 3 && c < 0x800) || (length == 4 && c < 0x10000) || within(c, 0xd800, 0xdfff) ||
           c > 0x10ffff;
}

} // namespace

std::u32string fromUtf8(const std::string& utf8)
{
    std::u32string text;
    for (size_t i = 0; i < utf8.size();) {
        const auto lead = static_cast<std::uint8_t>(utf8[i]);
        const int length = lengthOf(lead);
        char32_t c = length == 1 ? lead : lead & (0xffU >> (length + 1));
        int read = 1;
        while (read < length && i + static_cast<size_t>(read) < utf8.size() &&
               (static_cast<std::uint8_t>(utf8[i + static_cast<size_t>(read)]) & 0xc0U) == 0x80) {
            c = c << 6 | (static_cast<std::uint8_t>(utf8[i + static_cast<size_t>(read)]) & 0x3fU);
            ++read;
        }
        const bool valid = length > 0 && read == length && !isForbidden(c, length);
        text += valid ? c : replacement;
        i += valid ? static_cast<size_t>(length) : 1;
    }
    return text;
}

std::string toUtf8(const std::u32string& text)
{
    std::string utf8;
    const auto put = [&](char32_t byte) { utf8 += static_cast<char>(static_cast<unsigned char>(byte)); };
    for (const char32_t c : text) {
        if (c < 0x80) {
            put(c);
        } else if (c < 0x800) {
            put(0xc0 | c >> 6);
            put(0x80 | (c & 0x3f));
        } else if (c < 0x10000) {
            put(0xe0 | c >> 12);
            put(0x80 | (c >> 6 & 0x3f));
            put(0x80 | (c & 0x3f));
        } else {
            put(0xf0 | c >> 18);
            put(0x80 | (c >> 12 & 0x3f));
            put(0x80 | (c >> 6 & 0x3f));
            put(0x80 | (c & 0x3f));
        }
    }
    return utf8;
}

bool isIdeographic(char32_t c)
{
    return within(c, 0x2e80, 0x303f) || within(c, 0x3040, 0x30ff) || within(c, 0x3400, 0x4dbf) ||
           within(c, 0x4e00, 0x9fff) || within(c, 0xf900, 0xfaff) || within(c, 0xfe30, 0xfe4f) ||
           within(c, 0xff00, 0xffef) || within(c, 0x20000, 0x3ffff);
}

bool isLetter(char32_t c)
{
    return within(c, U'a', U'z') || within(c, U'A', U'Z') ||
           (within(c, 0xc0, 0x24f) && c != 0xd7 && c != 0xf7) || within(c, 0x370, 0x3ff) ||
           within(c, 0x400, 0x52f);
}

bool isCyrillic(char32_t c)
{
    return within(c, 0x400, 0x52f);
}

bool isLowercase(char32_t c)
{
    // Capital and small letter take turns there; in some rows the capitals are the odd ones.
    const bool isSecondEven = within(c, 0x139, 0x148) || within(c, 0x179, 0x17e) || within(c, 0x1cd, 0x1dc);
    if (within(c, 0x100, 0x24f))
        return c % 2 == (isSecondEven ? 0 : 1);
    return within(c, U'a', U'z') || (within(c, 0xdf, 0xff) && c != 0xf7) || within(c, 0x3ac, 0x3ce) ||
           within(c, 0x430, 0x45f);
}

char32_t lowercase(char32_t c)
{
    if (!isLetter(c) || isLowercase(c))
        return c;
    if (within(c, 0x100, 0x24f))
        return c + 1;
    return within(c, 0x400, 0x40f) ? c + 0x50 : c < 0x430 ? c + 0x20 : c;
}

bool isDigit(char32_t c)
{
    return within(c, U'0', U'9');
}

bool isReadable(char32_t c)
{
    return isLetter(c) || isIdeographic(c) || isDigit(c);
}

} // namespace mirvak
