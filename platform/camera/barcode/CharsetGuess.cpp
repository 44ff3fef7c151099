#include "CharsetGuess.h"

#include <algorithm>
#include <array>
#include <limits>
#include <utility>

namespace mirvak {

namespace {

// Decimal logarithms of how often a character of that class is met in a text of that set. Plain letters are
// in all sets alike and count nothing.
constexpr double impossible = -std::numeric_limits<double>::infinity();
constexpr double never = -6, rare = -5, seldom = -3.5, common = -3.3, narrow = -2.7, usual = -2.2;
constexpr double oddPlace = -1.0; // a character of another script right at a letter, an accent at none

struct Character
{
    size_t length;
    double weight;
};

unsigned char byteAt(std::string_view bytes, size_t at)
{
    return at < bytes.size() ? static_cast<unsigned char>(bytes[at]) : 0;
}

bool isLetter(unsigned char byte)
{
    return (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z');
}

bool isWithin(unsigned value, unsigned first, unsigned last)
{
    return value >= first && value <= last;
}

int lettersBeside(std::string_view bytes, size_t at, size_t length)
{
    return (at > 0 && isLetter(byteAt(bytes, at - 1)) ? 1 : 0) +
           (isLetter(byteAt(bytes, at + length)) ? 1 : 0);
}

Character latin1(std::string_view bytes, size_t at)
{
    const unsigned char byte = byteAt(bytes, at);
    if (byte < 0xA0)
        return {1, never}; // a control character
    // Accented letters stand among letters, and signs as the degree or the pound do not.
    const unsigned char before = at > 0 ? byteAt(bytes, at - 1) : 0, after = byteAt(bytes, at + 1);
    const bool inWord = lettersBeside(bytes, at, 1) > 0 || before >= 0xC0 || after >= 0xC0;
    if (byte >= 0xC0)
        return {1, inWord ? usual : usual + oddPlace};
    return {1, before >= 0x80 || after >= 0x80 ? rare : seldom};
}

Character shiftJis(std::string_view bytes, size_t at)
{
    const unsigned char first = byteAt(bytes, at), second = byteAt(bytes, at + 1);
    if (isWithin(first, 0xA1, 0xDF)) // narrow Katakana
        return {1, narrow};
    const bool isPair = (isWithin(first, 0x81, 0x9F) || isWithin(first, 0xE0, 0xFC)) &&
                        isWithin(second, 0x40, 0xFC) && second != 0x7F;
    if (!isPair)
        return {1, impossible};
    const unsigned pair = first * 256U + second;
    if (isWithin(pair, 0x829F, 0x82F1) || isWithin(pair, 0x8340, 0x8396)) // Hiragana, Katakana
        return {2, usual};
    if (isWithin(pair, 0x8140, 0x829A) || isWithin(pair, 0x889F, 0x9872)) // signs, first level
        return {2, seldom};
    return {2, first < 0xEB ? rare : never};
}

Character gb18030(std::string_view bytes, size_t at)
{
    const unsigned char first = byteAt(bytes, at), second = byteAt(bytes, at + 1);
    if (!isWithin(first, 0x81, 0xFE))
        return {1, impossible};
    if (isWithin(second, '0', '9')) {
        const bool isWhole =
            isWithin(byteAt(bytes, at + 2), 0x81, 0xFE) && isWithin(byteAt(bytes, at + 3), '0', '9');
        return {4, isWhole ? never : impossible};
    }
    if (!isWithin(second, 0x40, 0xFE) || second == 0x7F)
        return {1, impossible};
    const double odd = oddPlace * lettersBeside(bytes, at, 2);
    if (first < 0xA1 || second < 0xA1)
        return {2, never + odd};
    if (isWithin(first, 0xB0, 0xD7) || first <= 0xA3) // the characters of the first level; signs
        return {2, common + odd};
    return {2, isWithin(first, 0xD8, 0xF7) ? rare + odd : never + odd};
}

using Decoder = Character (*)(std::string_view bytes, size_t at);

double likelihood(std::string_view bytes, Decoder decode)
{
    double sum = 0;
    for (size_t at = 0; at < bytes.size();) {
        const Character character = byteAt(bytes, at) < 0x80 ? Character{1, 0} : decode(bytes, at);
        sum += character.weight;
        at += character.length;
    }
    return sum;
}

} // namespace

Charset likeliestCharset(std::string_view bytes)
{
    const std::array<std::pair<double, Charset>, 3> sets{{{likelihood(bytes, gb18030), Charset::gb18030},
                                                          {likelihood(bytes, shiftJis), Charset::shiftJis},
                                                          {likelihood(bytes, latin1), Charset::latin1}}};
    return std::max_element(
               sets.begin(), sets.end(), [](const auto& a, const auto& b) { return a.first < b.first; })
        ->second;
}

} // namespace mirvak
