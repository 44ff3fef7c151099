#include "PlainText.h"

#include "Unicode.h"

std::u32string plain(const std::u32string& text)
{
    std::u32string out;
    for (const char32_t c : text) {
        const bool isSpace = c <= U' ';
        if (!isSpace && !out.empty() && out.back() == U' ' && mirvak::isIdeographic(c))
            out.pop_back();
        const bool wanted = !out.empty() && out.back() != U' ' && !mirvak::isIdeographic(out.back());
        if (!isSpace)
            out += c;
        else if (wanted)
            out += U' ';
    }
    while (!out.empty() && out.back() == U' ')
        out.pop_back();
    return out;
}
