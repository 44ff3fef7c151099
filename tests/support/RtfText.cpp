#include "RtfText.h"

#include <algorithm>
#include <cstdint>
#include <regex>
#include <utility>
#include <vector>

std::optional<std::u32string> rtfText(const std::string& rtf)
{
    // A brace, a control word with its number and what ends it, a control sign, or a plain character.
    static const std::regex token(R"(([{}])|\\([a-z]+)(-?\d+)? ?|\\([^a-z'])|([\n\r])|([^\\\x80-\xff]))",
                                  std::regex::optimize);
    static const std::regex table("fonttbl|stylesheet|info");
    std::u32string text;
    std::vector<bool> skips; // of each open group
    char32_t high = 0;
    bool isSubstitute = false, isWhole = rtf.rfind("{\\rtf1", 0) == 0;
    const auto put = [&](char32_t c) {
        isWhole = isWhole && high == 0 && !skips.empty();
        if (isWhole && !skips.back())
            text += c;
    };
    auto end = rtf.cbegin();
    for (std::sregex_iterator it(rtf.begin(), rtf.end(), token, std::regex_constants::match_continuous), none;
         isWhole && it != none;
         ++it) {
        const std::smatch& m = *it;
        end = m[0].second;
        const std::string word = m[2];
        if (std::exchange(isSubstitute, false)) {
            isWhole = m[0] == "?";
        } else if (m[0] == "{") {
            skips.push_back(!skips.empty() && skips.back());
        } else if (m[0] == "}") {
            isWhole = !skips.empty();
            if (isWhole)
                skips.pop_back();
        } else if (word == "par" || word == "tab") {
            put(word == "par" ? U'\n' : U'\t');
        } else if (word == "u") {
            const int number = std::stoi(m[3]);
            const auto c = static_cast<char32_t>(static_cast<std::uint16_t>(number));
            const bool isLow = c >= 0xdc00 && c < 0xe000, isHigh = c >= 0xd800 && c < 0xdc00;
            isWhole = number >= -32768 && number <= 32767 && isLow == (high != 0);
            isSubstitute = true;
            const char32_t before = std::exchange(high, isHigh ? c : 0);
            if (!isHigh)
                put(isLow ? 0x10000 + ((before - 0xd800) << 10) + (c - 0xdc00) : c);
        } else if (std::regex_match(word, table) || m[4] == "*") {
            skips.back() = true;
        } else if (word.empty() && !m[5].matched) {
            put(static_cast<unsigned char>(*(m[0].second - 1)));
        }
    }
    return isWhole && end == rtf.cend() && skips.empty() && high == 0 ? std::optional(text) : std::nullopt;
}

size_t editDistance(const std::u32string& a, const std::u32string& b)
{
    std::vector<size_t> row(b.size() + 1);
    for (size_t j = 0; j < row.size(); ++j)
        row[j] = j;
    for (size_t i = 0; i < a.size(); ++i) {
        size_t diagonal = row[0];
        row[0] = i + 1;
        for (size_t j = 0; j < b.size(); ++j) {
            const size_t change = diagonal + (a[i] == b[j] ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({row[j] + 1, row[j + 1] + 1, change});
        }
    }
    return row.back();
}
