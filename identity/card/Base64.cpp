#include "Base64.h"

#include <string_view>

namespace base64 {
namespace {

constexpr std::string_view alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr size_t lineLength = 76;
constexpr int groupBytes = 3;
constexpr int groupLetters = 4;

/// A letter that does not belong here counts as the first one.
unsigned valueOf(char letter)
{
    const size_t place = alphabet.find(letter);
    return place == std::string_view::npos ? 0 : static_cast<unsigned>(place);
}

void appendGroup(std::string& text, std::string_view bytes)
{
    unsigned value = 0;
    for (size_t i = 0; i < groupBytes; ++i)
        value = value << 8 | (i < bytes.size() ? static_cast<unsigned char>(bytes[i]) : 0U);
    for (size_t i = 0; i < groupLetters; ++i)
        text += i <= bytes.size() ? alphabet[value >> (18 - 6 * i) & 0x3F] : '=';
}

/// Up to its first "=", or as far as it goes.
std::string decodeGroup(std::string_view letters)
{
    letters = letters.substr(0, letters.find('='));
    unsigned value = 0;
    for (size_t i = 0; i < groupLetters; ++i)
        value = value << 6 | (i < letters.size() ? valueOf(letters[i]) : 0U);
    std::string bytes;
    for (size_t i = 0; i + 1 < letters.size(); ++i)
        bytes += static_cast<char>(value >> (16 - 8 * i) & 0xFF);
    return bytes;
}

} // namespace

std::string encode(const char* data, int length)
{
    std::string text;
    size_t inLine = 0;
    for (int at = 0; at < length; at += groupBytes) {
        appendGroup(
            text,
            std::string_view(data, static_cast<size_t>(length)).substr(static_cast<size_t>(at), groupBytes));
        inLine += groupLetters;
        if (inLine == lineLength) {
            text += "\r\n";
            inLine = 0;
        }
    }
    return text;
}

std::string decode(const char* data, int length, int& outLength)
{
    std::string bytes;
    outLength = 0;
    const std::string_view text(data, length > 0 ? static_cast<size_t>(length) : 0);
    for (size_t at = 0; at < text.size(); at += groupLetters) {
        if (text[at] == '\r' || text[at] == '\n') {
            outLength += static_cast<int>(text.size() - at);
            break;
        }
        const std::string group = decodeGroup(text.substr(at, groupLetters));
        bytes += group;
        outLength += static_cast<int>(group.size());
    }
    return bytes;
}

} // namespace base64
