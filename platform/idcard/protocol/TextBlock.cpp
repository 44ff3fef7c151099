#include "TextBlock.h"

namespace idcard {
namespace {

/// Where a field lies, in bytes of the block.
struct Place
{
    Field field;
    size_t begin, bytes;
};

constexpr Place residentPlaces[] = {
    {Field::name, 0, 30},
    {Field::gender, 30, 2},
    {Field::nation, 32, 4},
    {Field::birth, 36, 16},
    {Field::address, 52, 70},
    {Field::number, 122, 36},
    {Field::authority, 158, 30},
    {Field::from, 188, 16},
    {Field::to, 204, 16},
};

// As above, but nothing is told of the nation.
constexpr Place residencePlaces[] = {
    {Field::name, 0, 30},
    {Field::gender, 30, 2},
    {Field::birth, 36, 16},
    {Field::address, 52, 70},
    {Field::number, 122, 36},
    {Field::authority, 158, 30},
    {Field::from, 188, 16},
    {Field::to, 204, 16},
    {Field::passNumber, 220, 18},
    {Field::issues, 238, 4},
    {Field::category, 248, 2},
};

constexpr Place foreignPlaces[] = {
    {Field::name, 0, 120},
    {Field::gender, 120, 2},
    {Field::number, 122, 30},
    {Field::nation, 152, 6},
    {Field::otherName, 158, 30},
    {Field::from, 188, 16},
    {Field::to, 204, 16},
    {Field::birth, 220, 16},
    {Field::version, 236, 4},
    {Field::authority, 240, 8},
    {Field::category, 248, 2},
};

constexpr size_t letterAt = 248;
constexpr char32_t noCharacter = 0xFFFD;

bool isIn(char32_t code, char32_t first, char32_t last)
{
    return code >= first && code <= last;
}

void appendUtf8(std::string& text, char32_t code)
{
    const auto tail = [&](int shift) { text += static_cast<char>(0x80 | (code >> shift & 0x3F)); };
    if (code < 0x80) {
        text += static_cast<char>(code);
    } else if (code < 0x800) {
        text += static_cast<char>(0xC0 | code >> 6);
        tail(0);
    } else if (code < 0x10000) {
        text += static_cast<char>(0xE0 | code >> 12);
        tail(6);
        tail(0);
    } else {
        text += static_cast<char>(0xF0 | code >> 18);
        tail(12);
        tail(6);
        tail(0);
    }
}

/// The characters of a field, one after the other.
class Characters
{
public:
    Characters(const Bytes& block, const Place& place)
        : block_(block), at_(place.begin), end_(place.begin + place.bytes)
    {
    }
    bool atEnd() const { return at_ >= end_; }
    char32_t next()
    {
        const char32_t first = unit();
        if (!isIn(first, 0xD800, 0xDFFF))
            return first;
        const bool isPair = first < 0xDC00 && !atEnd() && isIn(peek(), 0xDC00, 0xDFFF);
        return isPair ? 0x10000 + ((first - 0xD800) << 10) + (unit() - 0xDC00) : noCharacter;
    }

private:
    char32_t peek() const { return block_[at_] | static_cast<char32_t>(block_[at_ + 1]) << 8; }
    char32_t unit()
    {
        const char32_t code = peek();
        at_ += 2;
        return code;
    }

    const Bytes& block_;
    size_t at_, end_;
};

std::string text(const Bytes& block, const Place& place)
{
    std::string text;
    for (Characters characters(block, place); !characters.atEnd();) {
        const char32_t code = characters.next();
        appendUtf8(text, code < 0x20 || isIn(code, 0x7F, 0x9F) ? U' ' : code);
    }
    return text.substr(0, text.find_last_not_of(' ') + 1);
}

template <size_t count> Texts texts(const Bytes& block, const Place (&places)[count])
{
    Texts texts;
    for (const Place& place : places)
        texts[place.field] = text(block, place);
    return texts;
}

} // namespace

std::optional<TextBlock> decodeTextBlock(const Bytes& block)
{
    if (block.size() != textBlockBytes)
        return std::nullopt;
    const std::string letter = text(block, {Field::category, letterAt, 2});
    if (letter == "I")
        return TextBlock{CardKind::foreign, texts(block, foreignPlaces)};
    if (letter == "J")
        return TextBlock{CardKind::residence, texts(block, residencePlaces)};
    return TextBlock{CardKind::resident, texts(block, residentPlaces)};
}

} // namespace idcard
