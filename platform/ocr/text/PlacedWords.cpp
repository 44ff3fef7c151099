#include "PlacedWords.h"

#include "LineJoin.h"
#include "Unicode.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace mirvak {

namespace {

// Of the width of a line's words: how much may stick out above and below what counts as its print.
constexpr double outstanding = 0.1;
// Heights of a word: a line whose print reaches further is bent or lies at a slant.
constexpr double bentFrom = 1.5;

struct Band
{
    int top, bottom;
};

const Box& boxOf(const ReadWord& word)
{
    return word.frame == 0 ? word.box : word.lying;
}

/// The value that this share of the words' width does not exceed.
template <class Value> int quantile(const std::vector<const ReadWord*>& words, double share, Value value)
{
    std::vector<std::pair<int, double>> sorted;
    double all = 0;
    for (const ReadWord* word : words) {
        const double width = std::max(1, boxOf(*word).width());
        sorted.emplace_back(value(boxOf(*word)), width);
        all += width;
    }
    std::sort(sorted.begin(), sorted.end());
    double sum = 0;
    for (const auto& [next, width] : sorted) {
        sum += width;
        if (sum >= share * all)
            return next;
    }
    return sorted.back().first;
}

/// From where to where the print of a straight line reaches; nothing for another one.
std::optional<Band> bandOf(const std::vector<const ReadWord*>& words)
{
    const Band band{quantile(words, outstanding, [](const Box& box) { return box.top; }),
                    quantile(words, 1 - outstanding, [](const Box& box) { return box.bottom; })};
    const int height = quantile(words, 1 - outstanding, [](const Box& box) { return box.height(); });
    if (band.bottom - band.top > bentFrom * height || band.bottom <= band.top)
        return std::nullopt;
    return band;
}

Homography product(const Homography& a, const Homography& b)
{
    Homography both{};
    for (size_t row = 0; row < 3; ++row)
        for (size_t column = 0; column < 3; ++column)
            for (size_t i = 0; i < 3; ++i)
                both[row * 3 + column] += a[row * 3 + i] * b[i * 3 + column];
    return both;
}

Place moved(const Homography& by, double x, double y)
{
    const double depth = by[6] * x + by[7] * y + by[8];
    return {(by[0] * x + by[1] * y + by[2]) / depth, (by[3] * x + by[4] * y + by[5]) / depth};
}

class LinePlacer
{
public:
    LinePlacer(const ReadPage& page, const ReadLine& line) : page_(page), line_(line) {}

    /// `text` is the line's running text: the same letters, with spaces where they belong.
    void place(const std::u32string& text, PlacedWord base, std::vector<PlacedWord>& words) const
    {
        size_t at = 0;
        for (const ReadWord& word : line_.words) {
            std::u32string letters;
            while (at < text.size() && text[at] == U' ')
                ++at;
            for (size_t left = lettersOf(word); left > 0 && at < text.size(); ++at) {
                letters += text[at];
                left -= text[at] != U' ' ? 1 : 0;
            }
            if (letters.empty())
                continue;
            base.text = toUtf8(letters);
            base.confidence = word.confidence;
            base.isSpaceBehind = at < text.size() && text[at] == U' ';
            base.corners = cornersOf(word);
            words.push_back(base);
        }
    }

private:
    static size_t lettersOf(const ReadWord& word)
    {
        const std::u32string text = fromUtf8(word.text);
        return text.size() - static_cast<size_t>(std::count(text.begin(), text.end(), U' '));
    }

    std::array<Place, 4> cornersOf(const ReadWord& word) const
    {
        std::vector<const ReadWord*> beside;
        for (const ReadWord& other : line_.words) {
            if (other.frame == word.frame)
                beside.push_back(&other);
        }
        const Box& box = boxOf(word);
        const Band band = bandOf(beside).value_or(Band{box.top, box.bottom});
        const Homography way = product(page_.toPicture, page_.frames[static_cast<size_t>(word.frame)]);
        return {moved(way, box.left, band.top),
                moved(way, box.right, band.top),
                moved(way, box.right, band.bottom),
                moved(way, box.left, band.bottom)};
    }

    const ReadPage& page_;
    const ReadLine& line_;
};

} // namespace

PlacedWords placeWords(const ReadPage& page)
{
    PlacedWords placed{page.pictureWidth, page.pictureHeight, {}};
    PlacedWord base;
    for (const ReadBlock& block : page.blocks) {
        for (const ReadLine& line : block) {
            LinePlacer(page, line).place(joinWords(line.words).text(), base, placed.words);
            ++base.line;
        }
        ++base.block;
    }
    return placed;
}

} // namespace mirvak
