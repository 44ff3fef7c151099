#include "PayloadText.h"

#include "CharsetGuess.h"

#include <iconv.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace mirvak {

namespace {

constexpr const char* nulSign = "\u2400";
constexpr const char* replacement = "\uFFFD";

unsigned char byteAt(std::string_view bytes, size_t at)
{
    return at < bytes.size() ? static_cast<unsigned char>(bytes[at]) : 0;
}

// The number of bytes of the valid UTF-8 character at `at`, 0 when there is none (RFC 3629).
size_t characterLength(std::string_view bytes, size_t at)
{
    const unsigned char first = byteAt(bytes, at), second = byteAt(bytes, at + 1);
    if (first < 0x80)
        return 1;
    size_t length = 0;
    unsigned char low = 0x80, high = 0xBF;
    if (first >= 0xC2 && first <= 0xDF) {
        length = 2;
    } else if (first >= 0xE0 && first <= 0xEF) {
        length = 3;
        low = first == 0xE0 ? 0xA0 : 0x80;
        high = first == 0xED ? 0x9F : 0xBF;
    } else if (first >= 0xF0 && first <= 0xF4) {
        length = 4;
        low = first == 0xF0 ? 0x90 : 0x80;
        high = first == 0xF4 ? 0x8F : 0xBF;
    }
    if (length == 0 || second < low || second > high)
        return 0;
    for (size_t i = 2; i < length; ++i) {
        if ((byteAt(bytes, at + i) & 0xC0) != 0x80)
            return 0;
    }
    return length;
}

bool isUtf8(std::string_view bytes)
{
    for (size_t at = 0; at < bytes.size();) {
        const size_t length = characterLength(bytes, at);
        if (length == 0)
            return false;
        at += length;
    }
    return true;
}

std::string withReplacements(std::string_view bytes)
{
    std::string result;
    for (size_t at = 0; at < bytes.size();) {
        const size_t length = characterLength(bytes, at);
        result += length ? std::string(bytes.substr(at, length)) : replacement;
        at += length ? length : 1;
    }
    return result;
}

std::optional<std::string> convertedFrom(const char* charset, std::string_view bytes)
{
    const iconv_t converter = iconv_open("UTF-8", charset);
    if (reinterpret_cast<std::intptr_t>(converter) == -1)
        return std::nullopt;
    std::string result(bytes.size() * 4, '\0');
    char* from = const_cast<char*>(bytes.data());
    char* to = result.data();
    size_t left = bytes.size(), room = result.size();
    const bool isDone = iconv(converter, &from, &left, &to, &room) != static_cast<size_t>(-1);
    iconv_close(converter);
    if (!isDone)
        return std::nullopt;
    result.resize(result.size() - room);
    return result;
}

std::string fromLatin1(std::string_view bytes)
{
    std::string result;
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x80) {
            result += c;
        } else {
            result += static_cast<char>(0xC0 | byte >> 6);
            result += static_cast<char>(0x80 | (byte & 0x3F));
        }
    }
    return result;
}

std::string guessed(std::string_view bytes)
{
    if (isUtf8(bytes))
        return std::string(bytes);
    const Charset charset = likeliestCharset(bytes);
    if (charset == Charset::latin1)
        return fromLatin1(bytes);
    return convertedFrom(charset == Charset::shiftJis ? "SHIFT_JIS" : "GB18030", bytes)
        .value_or(fromLatin1(bytes));
}

} // namespace

std::string payloadText(const std::string& bytes, bool isText)
{
    std::string result;
    for (const char c : isText ? withReplacements(bytes) : guessed(bytes)) {
        if (c == '\0')
            result += nulSign;
        else
            result += c;
    }
    return result;
}

} // namespace mirvak
