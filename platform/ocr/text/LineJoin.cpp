#include "LineJoin.h"

#include "Unicode.h"

#include <algorithm>

namespace mirvak {

namespace {

constexpr char32_t hyphen = 0x2010, softHyphen = 0xad;

char32_t fullWidth(char32_t c)
{
    static const std::u32string narrow = U",;:!?()", wide = U"，；：！？（）";
    const size_t at = narrow.find(c);
    return at == std::u32string::npos ? c : wide[at];
}

// "12:30" keeps its colon: only what follows an ideograph, or opens before one, is written full.
void widenPunctuation(MarkedText& marked)
{
    const std::u32string& text = marked.text();
    for (size_t i = 0; i < text.size(); ++i) {
        const bool after = i > 0 && isIdeographic(text[i - 1]);
        const bool before = i + 1 < text.size() && isIdeographic(text[i + 1]);
        if (text[i] == U'(' ? before : after)
            marked.replace(i, fullWidth(text[i]));
    }
}

bool isQuote(char32_t c)
{
    return c == 0x201c || c == 0x201d || c == 0x2018 || c == 0x2019;
}

bool needsSpace(char32_t left, char32_t right)
{
    return !isIdeographic(left) && !isIdeographic(right);
}

// Spaces beside ideographs go, and those beside a quotation mark that touches one.
void dropSpaces(MarkedText& marked)
{
    const std::u32string& text = marked.text();
    MarkedText kept;
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] != U' ' || kept.empty() || i + 1 == text.size()) {
            kept.append(text[i], marked.isMarked(i));
            continue;
        }
        const char32_t last = kept.text().back();
        const bool closed = isQuote(last) && kept.size() > 1 && isIdeographic(kept.text()[kept.size() - 2]);
        const bool opens = isQuote(text[i + 1]) && i + 2 < text.size() && isIdeographic(text[i + 2]);
        if (needsSpace(last, text[i + 1]) && !closed && !opens)
            kept.append(U' ', marked.isMarked(i));
    }
    marked = std::move(kept);
}

bool isHyphen(char32_t c)
{
    return c == U'-' || c == hyphen || c == softHyphen;
}

std::u32string lastWord(const std::u32string& text)
{
    size_t from = text.size();
    while (from > 0 && isLetter(text[from - 1]))
        --from;
    return text.substr(from);
}

std::u32string firstWord(const std::u32string& text)
{
    return {text.begin(), std::find_if_not(text.begin(), text.end(), isLetter)};
}

// Whether the hyphen belongs to the word itself.
bool keepsHyphen(const std::u32string& left, const std::u32string& right, const IsWord& isWord)
{
    if (!isWord || isWord(toUtf8(left + right)))
        return false;
    return isWord(toUtf8(left + U'-' + right)) || (isWord(toUtf8(left)) && isWord(toUtf8(right)));
}

} // namespace

MarkedText joinWords(const std::vector<ReadWord>& words)
{
    MarkedText text;
    for (const ReadWord& word : words) {
        if (!text.empty())
            text.append(U' ', false);
        text.append({fromUtf8(word.text), word.isUnsure});
    }
    // Once more, because what has become full width takes the space behind it along.
    for (int pass = 0; pass < 2; ++pass) {
        dropSpaces(text);
        widenPunctuation(text);
    }
    dropSpaces(text);
    return text;
}

void appendLine(MarkedText& paragraph, const MarkedText& line, const IsWord& isWord)
{
    if (paragraph.empty() || line.empty()) {
        paragraph.append(line);
        return;
    }
    const char32_t last = paragraph.text().back(), first = line.text().front();
    const bool inWord = isHyphen(last) && paragraph.size() > 1;
    const char32_t before = inWord ? paragraph.text()[paragraph.size() - 2] : U' ';
    if (!inWord || !isLetter(before) || !isLowercase(first)) {
        // "1990-" and "North-" go on without a space, a dash between two words does not.
        if ((!inWord || before == U' ') && needsSpace(last, first))
            paragraph.append(U' ', false);
        paragraph.append(line);
        return;
    }
    const bool wasMarked = paragraph.isMarked(paragraph.size() - 1);
    paragraph.dropLast();
    const std::u32string left = lastWord(paragraph.text()), right = firstWord(line.text());
    const size_t from = paragraph.size() - left.size();
    if (last != softHyphen && keepsHyphen(left, right, isWord))
        paragraph.append(last, wasMarked);
    const size_t seam = paragraph.size();
    paragraph.append(line);
    if (paragraph.isMarked(from) || line.isMarked(0))
        paragraph.mark(from, seam + right.size());
}

} // namespace mirvak
