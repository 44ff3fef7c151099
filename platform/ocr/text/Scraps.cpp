#include "Scraps.h"

#include "Confidence.h"
#include "Unicode.h"

#include <algorithm>

namespace mirvak {

namespace {

constexpr double leastOfLine = 35;      // percent
constexpr double leastOfShortLine = 75; // a few letters by themselves may be a speck or a piece of a picture
constexpr long shortLine = 2;           // letters
constexpr float leastOfSigns = 60;      // for what is neither letter nor digit
// In heights of a mark. A full stop stands at its word; what is as small and stands off is dust, which is
// also read as strokes and rings.
constexpr double speck = 0.28, standsOff = 0.4;
constexpr double dash = 0.95;         // the least width, in heights of a mark
constexpr float leastOfLastDash = 40; // percent: at the end of a line, where dust may lie
constexpr char32_t wideDash = U'\u2014';

long lettersOf(const ReadWord& word)
{
    const std::u32string text = fromUtf8(word.text);
    return std::count_if(text.begin(), text.end(), isReadable);
}

// Between the parts of a name it stands off.
bool isMiddleDot(const ReadWord& word)
{
    const std::u32string text = fromUtf8(word.text);
    return text == U"\u00b7" || text == U"\u2022" || text == U"\u30fb";
}

// Behind a word it is a sign of the text, whatever the recogniser takes it for. It lies flat: in wide white
// the recogniser now and then reads one of nothing, as high as the line.
bool isDash(const std::vector<ReadWord>& words, size_t at, int markHeight)
{
    const ReadWord& word = words[at];
    const std::u32string text = fromUtf8(word.text);
    return at > 0 && (at + 1 < words.size() || word.confidence >= leastOfLastDash) &&
           word.box.width() > std::max<double>(dash * markHeight, word.box.height()) &&
           std::all_of(text.begin(), text.end(), [](char32_t c) {
               return c == U'-' || c == U'\u2013' || c == wideDash;
           });
}

// A worn one is read as two that touch.
void makeOne(ReadWord& dashes)
{
    if (fromUtf8(dashes.text).find(wideDash) != std::u32string::npos)
        dashes.text = "\u2014";
}

// Nothing beside it, to which it might belong.
bool isSpeck(const std::vector<ReadWord>& words, size_t at, int markHeight)
{
    const Box& box = words[at].box;
    const double gap = standsOff * markHeight;
    return !isMiddleDot(words[at]) && std::max(box.width(), box.height()) < speck * markHeight &&
           (at == 0 || box.left - words[at - 1].box.right > gap) &&
           (at + 1 == words.size() || words[at + 1].box.left - box.right > gap);
}

void dropSigns(ReadLine& line, int markHeight)
{
    std::vector<ReadWord> kept;
    for (size_t i = 0; i < line.words.size(); ++i) {
        ReadWord& word = line.words[i];
        const bool isStroke = isDash(line.words, i, markHeight);
        if (isStroke)
            makeOne(word);
        if (lettersOf(word) > 0 || isStroke ||
            (word.confidence >= leastOfSigns && !isSpeck(line.words, i, markHeight)))
            kept.push_back(word);
    }
    line.words = std::move(kept);
}

bool isScrap(const ReadLine& line)
{
    long letters = 0;
    for (const ReadWord& word : line.words)
        letters += lettersOf(word);
    return letters == 0 || confidenceOf(line.words) < (letters > shortLine ? leastOfLine : leastOfShortLine);
}

} // namespace

void dropScraps(ReadPage& page, int markHeight)
{
    for (ReadBlock& block : page.blocks) {
        for (ReadLine& line : block)
            dropSigns(line, markHeight);
        block.erase(std::remove_if(block.begin(), block.end(), isScrap), block.end());
    }
    page.blocks.erase(std::remove_if(page.blocks.begin(),
                                     page.blocks.end(),
                                     [](const ReadBlock& block) { return block.empty(); }),
                      page.blocks.end());
}

} // namespace mirvak
