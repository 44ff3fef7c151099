#include "PdfGlyphs.h"

#include "InvisibleFont.h"

#define POINTERHOLDER_TRANSITION 4 // the library's old smart pointer stays away
#include <qpdf/QPDF.hh>
#include <qpdf/QPDFObjectHandle.hh>
#include <qpdf/QUtil.hh>

#include <algorithm>
#include <cstring>

namespace mirvak {

namespace {

using Object = QPDFObjectHandle;

constexpr size_t mostCodes = 0xffff;
constexpr size_t mostLines = 100; // of one section of a character map

bool isText(char32_t letter)
{
    const bool isControl = letter < 0x20 || (letter >= 0x7f && letter < 0xa0);
    const bool isNone = (letter >= 0xd800 && letter < 0xe000) || letter == 0xfeff || letter == 0xfffe ||
                        letter == 0xffff || letter == 0xfffd || letter > 0x10ffff;
    return !isControl && !isNone;
}

std::vector<char32_t> lettersOf(const std::string& utf8)
{
    std::vector<char32_t> letters;
    for (size_t at = 0; at < utf8.size();) {
        bool isWrong = false;
        const auto letter = static_cast<char32_t>(QUtil::get_next_utf8_codepoint(utf8, at, isWrong));
        if (!isWrong && isText(letter))
            letters.push_back(letter);
    }
    return letters;
}

/// About as wide as print has it, so that a part of a word can be marked.
int glyphOf(char32_t letter)
{
    constexpr char32_t firstWide = 0x2e80; // of the scripts that are written in squares
    if (letter >= firstWide)
        return 4;
    if (letter < 0x80 && std::strchr(" ijlI.,:;!|'`()[]", static_cast<int>(letter)))
        return 1;
    if (letter < 0x80 && std::strchr("mwMW@%", static_cast<int>(letter)))
        return 3;
    return 2;
}

std::string hexOf(unsigned value)
{
    constexpr unsigned bitsOfDigit = 4;
    std::string digits;
    for (int shift = 3; shift >= 0; --shift)
        digits += "0123456789ABCDEF"[value >> (bitsOfDigit * static_cast<unsigned>(shift)) & 0xfU];
    return digits;
}

std::string utf16Hex(char32_t letter)
{
    if (letter < 0x10000)
        return hexOf(letter);
    const unsigned beyond = letter - 0x10000;
    return hexOf(0xd800 + (beyond >> 10)) + hexOf(0xdc00 + (beyond & 0x3ff));
}

const char* const mapBegin = "/CIDInit /ProcSet findresource begin\n"
                             "12 dict begin\nbegincmap\n"
                             "/CIDSystemInfo << /Registry (Adobe) /Ordering (UCS) /Supplement 0 >> def\n"
                             "/CMapName /Adobe-Identity-UCS def\n/CMapType 2 def\n"
                             "1 begincodespacerange\n<0000> <FFFF>\nendcodespacerange\n";
const char* const mapEnd = "endcmap\nCMapName currentdict /CMap defineresource pop\nend\nend\n";

std::string unicodeMap(const std::vector<char32_t>& letters)
{
    std::string map = mapBegin;
    for (size_t i = 0; i < letters.size(); ++i) {
        if (i % mostLines == 0)
            map += std::to_string(std::min(mostLines, letters.size() - i)) + " beginbfchar\n";
        map += '<' + hexOf(static_cast<unsigned>(i + 1)) + "> <" + utf16Hex(letters[i]) + ">\n";
        if (i % mostLines == mostLines - 1 || i + 1 == letters.size())
            map += "endbfchar\n";
    }
    return map + mapEnd;
}

/// Two bytes for each code from 0: its glyph.
std::string glyphMap(const std::vector<char32_t>& letters)
{
    std::string map(2, '\0');
    for (const char32_t letter : letters) {
        map += '\0';
        map += static_cast<char>(glyphOf(letter));
    }
    return map;
}

Object widthsOf(const std::vector<char32_t>& letters)
{
    Object widths = Object::newArray();
    for (const char32_t letter : letters)
        widths.appendItem(Object::newInteger(invisibleFont::widths[glyphOf(letter)]));
    return Object::newArray({Object::newInteger(1), widths});
}

Object descriptorOf(QPDF& pdf, const Object& name)
{
    const Bytes bytes = invisibleFont::file();
    Object file = Object::newStream(&pdf, std::string(bytes.begin(), bytes.end()));
    file.getDict().replaceKey("/Length1", Object::newInteger(static_cast<long long>(bytes.size())));
    Object descriptor = Object::parse("<< /Type /FontDescriptor /Flags 4 /ItalicAngle 0 /StemV 0 "
                                      "/FontBBox [ 0 -220 1000 780 ] /Ascent 780 /Descent -220 "
                                      "/CapHeight 780 >>");
    descriptor.replaceKey("/FontName", name);
    descriptor.replaceKey("/FontFile2", file);
    return pdf.makeIndirectObject(descriptor);
}

} // namespace

int PdfGlyphs::codeOf(char32_t letter)
{
    const auto known = codes_.find(letter);
    if (known != codes_.end())
        return known->second;
    if (letters_.size() == mostCodes)
        return 0;
    letters_.push_back(letter);
    return codes_[letter] = static_cast<int>(letters_.size());
}

PdfGlyphs::Codes PdfGlyphs::codesOf(const std::string& utf8)
{
    Codes codes;
    for (const char32_t letter : lettersOf(utf8)) {
        const int code = codeOf(letter);
        if (code == 0)
            continue;
        codes.hex += hexOf(static_cast<unsigned>(code));
        codes.ems += invisibleFont::widths[glyphOf(letter)] / invisibleFont::unitsPerEm;
    }
    return codes;
}

Object PdfGlyphs::font(QPDF& pdf) const
{
    const Object name = Object::newName("/LumroInvisible");
    Object descendant = Object::parse("<< /Type /Font /Subtype /CIDFontType2 /DW 500 /CIDSystemInfo "
                                      "<< /Registry (Adobe) /Ordering (Identity) /Supplement 0 >> >>");
    descendant.replaceKey("/BaseFont", name);
    descendant.replaceKey("/FontDescriptor", descriptorOf(pdf, name));
    descendant.replaceKey("/W", widthsOf(letters_));
    descendant.replaceKey("/CIDToGIDMap", Object::newStream(&pdf, glyphMap(letters_)));
    Object font = Object::parse("<< /Type /Font /Subtype /Type0 /Encoding /Identity-H >>");
    font.replaceKey("/BaseFont", name);
    font.replaceKey("/DescendantFonts", Object::newArray({pdf.makeIndirectObject(descendant)}));
    font.replaceKey("/ToUnicode", Object::newStream(&pdf, unicodeMap(letters_)));
    return pdf.makeIndirectObject(font);
}

} // namespace mirvak
