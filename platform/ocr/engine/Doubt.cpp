#include "Doubt.h"

#include "TextModel.h"
#include "Unicode.h"

#include <algorithm>

namespace mirvak {

namespace {

/// Percent of confidence, below which a word is doubtful. bench_layout tells how many of those that are
/// marked are wrong, and how many of the wrong ones are marked.
struct Least
{
    float known;   ///< a dictionary has the word
    float unknown; ///< none has it
};

constexpr Least letters{35, 85}; // a dictionary's word is seldom wrong, however worn
constexpr Least ideographs{30, 55};
constexpr Least numbers{76, 76};
constexpr Least foreign{60, 88}; // letters among ideographs: a model may have seen them in worn strokes

Least leastFor(const std::u32string& text, bool isAmongIdeographs)
{
    if (std::any_of(text.begin(), text.end(), isIdeographic))
        return ideographs;
    if (std::any_of(text.begin(), text.end(), isLetter))
        return isAmongIdeographs ? foreign : letters;
    return numbers;
}

// Punctuation around it belongs to no word.
std::u32string bareWord(const std::u32string& text)
{
    const auto first = std::find_if(text.begin(), text.end(), isReadable);
    const auto last = std::find_if(text.rbegin(), std::make_reverse_iterator(first), isReadable);
    return {first, last.base()};
}

} // namespace

void markUnsure(ReadPage& page, const IsWord& isWord)
{
    const bool ideographic = isUnspaced(page.language);
    for (ReadBlock& block : page.blocks) {
        for (ReadLine& line : block) {
            for (ReadWord& word : line.words) {
                const std::u32string text = bareWord(fromUtf8(word.text));
                const Least least = leastFor(text, ideographic);
                if (text.empty() || word.confidence >= std::max(least.known, least.unknown))
                    continue;
                const bool known = isWord && isWord(toUtf8(text));
                word.isUnsure = word.confidence < (known ? least.known : least.unknown);
            }
        }
    }
}

} // namespace mirvak
