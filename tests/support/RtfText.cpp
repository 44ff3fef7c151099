#include "RtfText.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdint>
#include <cstdlib>
#include <utility>
#include <vector>

namespace {

class Reader
{
public:
    explicit Reader(const std::string& rtf) : rtf_(rtf) {}

    /// Whether it is well-formed.
    bool read()
    {
        broken_ = rtf_.rfind("{\\rtf1", 0) != 0;
        while (at_ < rtf_.size() && !broken_)
            step();
        return !broken_ && skips_.empty() && high_ == 0;
    }
    const std::u32string& text() const { return text_; }
    const std::u32string& highlighted() const { return highlighted_; }

private:
    void step()
    {
        const char c = rtf_[at_++];
        broken_ = static_cast<unsigned char>(c) >= 0x80;
        if (c == '{') {
            skips_.push_back(!skips_.empty() && skips_.back());
        } else if (c == '}') {
            broken_ = skips_.empty();
            if (!broken_)
                skips_.pop_back();
        } else if (c == '\\') {
            control();
        } else if (c != '\n' && c != '\r') {
            put(static_cast<unsigned char>(c));
        }
    }

    void control()
    {
        if (at_ >= rtf_.size() || rtf_[at_] == '\'') {
            broken_ = true;
            return;
        }
        const char c = rtf_[at_];
        if (std::isalpha(static_cast<unsigned char>(c)) == 0) {
            ++at_;
            if (c == '*')
                skips_.back() = true;
            else
                put(static_cast<unsigned char>(c));
            return;
        }
        std::string name;
        while (at_ < rtf_.size() && std::isalpha(static_cast<unsigned char>(rtf_[at_])) != 0)
            name += rtf_[at_++];
        const char* from = rtf_.c_str() + at_;
        char* end = nullptr;
        const long number = std::strtol(from, &end, 10);
        if (*from != ' ' && *from != '+')
            at_ += static_cast<size_t>(end - from);
        if (at_ < rtf_.size() && rtf_[at_] == ' ')
            ++at_;
        word(name, number);
    }

    void word(const std::string& name, long number)
    {
        static const std::array<const char*, 4> tables{"fonttbl", "colortbl", "stylesheet", "info"};
        if (std::find(tables.begin(), tables.end(), name) != tables.end())
            skips_.back() = true;
        if (name == "red")
            ++colours_;
        else if (name == "highlight" || name == "plain")
            highlight(name == "plain" ? 0 : number);
        else if (name == "par")
            put(U'\n');
        else if (name == "tab")
            put(U'\t');
        else if (name == "u")
            unit(number);
    }

    void highlight(long colour)
    {
        broken_ = colour < 0 || colour > colours_;
        if (colour == 0 && isHighlit_ && !highlighted_.empty())
            highlighted_ += U'\n';
        isHighlit_ = colour > 0;
    }

    void unit(long number)
    {
        broken_ = number < -32768 || number > 32767 || at_ >= rtf_.size() || rtf_[at_] != '?';
        ++at_; // the substitute
        const auto c = static_cast<char32_t>(static_cast<std::uint16_t>(number));
        const bool isLow = c >= 0xdc00 && c < 0xe000;
        broken_ = broken_ || isLow != (high_ != 0);
        if (c >= 0xd800 && c < 0xdc00) {
            high_ = c;
            return;
        }
        const char32_t high = std::exchange(high_, 0);
        put(isLow ? 0x10000 + ((high - 0xd800) << 10) + (c - 0xdc00) : c);
    }

    void put(char32_t c)
    {
        broken_ = broken_ || high_ != 0 || skips_.empty();
        if (broken_ || skips_.back())
            return;
        text_ += c;
        if (isHighlit_)
            highlighted_ += c;
    }

    const std::string& rtf_;
    size_t at_ = 0;
    std::u32string text_, highlighted_;
    long colours_ = 0; // of the table
    bool isHighlit_ = false;
    std::vector<bool> skips_; // of each open group
    char32_t high_ = 0;
    bool broken_ = false;
};

} // namespace

std::optional<std::u32string> rtfText(const std::string& rtf)
{
    Reader reader(rtf);
    return reader.read() ? std::optional(reader.text()) : std::nullopt;
}

std::optional<std::u32string> rtfHighlighted(const std::string& rtf)
{
    Reader reader(rtf);
    return reader.read() ? std::optional(reader.highlighted()) : std::nullopt;
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
