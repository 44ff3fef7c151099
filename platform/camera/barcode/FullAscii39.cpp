#include "FullAscii39.h"

#include <optional>

namespace mirvak {

namespace {

std::optional<char> meaning(char sign, char letter)
{
    if (letter < 'A' || letter > 'Z')
        return std::nullopt;
    const int place = letter - 'A';
    const auto from = [place](int first, int base) { return static_cast<char>(base + place - first); };
    switch (sign) {
    case '$': // control characters
        return from(0, 1);
    case '+':
        return from(0, 'a');
    case '/':
        if (place <= 'L' - 'A' || letter == 'O')
            return from(0, '!');
        return letter == 'Z' ? std::optional(':') : std::nullopt;
    default: // '%', five by five
        if (letter <= 'E')
            return from(0, 27);
        if (letter <= 'J')
            return from('F' - 'A', ';');
        if (letter <= 'O')
            return from('K' - 'A', '[');
        if (letter <= 'T')
            return from('P' - 'A', '{');
        return letter == 'U'   ? std::optional('\0')
               : letter == 'V' ? std::optional('@')
               : letter == 'W' ? std::optional('`')
                               : std::nullopt;
    }
}

} // namespace

std::string fullAscii39(std::string_view text)
{
    constexpr int believed = 2;
    std::string result;
    int smallLetters = 0;
    for (size_t at = 0; at < text.size(); ++at) {
        const char sign = text[at];
        if (sign != '$' && sign != '%' && sign != '/' && sign != '+') {
            result += sign;
            continue;
        }
        const std::optional<char> character =
            at + 1 < text.size() ? meaning(sign, text[at + 1]) : std::nullopt;
        if (!character)
            return std::string(text);
        result += *character;
        smallLetters += sign == '+';
        ++at;
    }
    return smallLetters >= believed ? result : std::string(text);
}

} // namespace mirvak
