#include "SmallLetters.h"

#include "Boxes.h"
#include "Unicode.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace mirvak {

namespace {

constexpr double noCapital = 1.15;    // heights of a small letter; capitals have 1.35 to 1.5
constexpr double leastLetter = 0.5;   // heights of the page's marks: less is a dot or a comma
constexpr double pieceOfLetter = 0.6; // of a letter's usual width: what begins so near belongs to it
constexpr size_t enoughLetters = 6;   // to measure small letters

// Others change their shape, so that a misread one would not look like itself.
bool hasOneShape(char32_t capital)
{
    static const std::u32string all = U"ВГДЖЗИЙКЛМНОПСТХЦЧШЩЪЫЬЭЮЯCOSVWXZ";
    return all.find(capital) != std::u32string::npos;
}

bool isCapital(char32_t c)
{
    return c != lowercase(c);
}

int medianOf(std::vector<int> heights)
{
    const auto middle = heights.begin() + static_cast<std::ptrdiff_t>(heights.size() / 2);
    std::nth_element(heights.begin(), middle, heights.end());
    return *middle;
}

// Most small letters have no stroke that sticks out; those that have are higher.
std::optional<double> smallOf(std::vector<int> heights)
{
    if (heights.size() < enoughLetters)
        return std::nullopt;
    const auto low = heights.begin() + static_cast<std::ptrdiff_t>(heights.size() * 3 / 10);
    std::nth_element(heights.begin(), low, heights.end());
    return *low;
}

std::vector<int> heightsOf(const std::vector<cv::Rect>& letters)
{
    std::vector<int> heights(letters.size());
    std::transform(letters.begin(), letters.end(), heights.begin(), [](const cv::Rect& letter) {
        return letter.height;
    });
    return heights;
}

// Its thin strokes may have gone, so that it lies in pieces beside each other, too; nothing when it has gone
// altogether.
std::optional<int> firstHeight(const std::vector<cv::Rect>& letters, const ReadWord& word, size_t length)
{
    const double usualWidth = static_cast<double>(word.box.width()) / static_cast<double>(length);
    cv::Rect first;
    for (const cv::Rect& letter : letters) {
        if (letter.x < word.box.left + pieceOfLetter * usualWidth)
            first |= letter;
    }
    return first.empty() ? std::nullopt : std::optional<int>(first.height);
}

/// A line's words and how high their letters are.
class Measure
{
public:
    Measure(const ReadLine& line, const Marks& marks)
    {
        const cv::Rect box = rectOf(line.box);
        for (const cv::Rect& mark : marks.boxes) {
            if (mark.height > leastLetter * marks.height && box.contains((mark.tl() + mark.br()) / 2))
                marks_.push_back(mark);
        }
        std::sort(
            marks_.begin(), marks_.end(), [](const cv::Rect& a, const cv::Rect& b) { return a.x < b.x; });
    }

    /// From the left. Worn letters lie in pieces above each other.
    std::vector<cv::Rect> lettersIn(const ReadWord& word) const
    {
        const cv::Rect box = rectOf(word.box);
        std::vector<cv::Rect> letters;
        for (const cv::Rect& mark : marks_) {
            if (!box.contains((mark.tl() + mark.br()) / 2))
                continue;
            const bool isPiece =
                !letters.empty() && 2 * shared(letters.back().x, letters.back().br().x, mark.x, mark.br().x) >
                                        std::min(letters.back().width, mark.width);
            if (isPiece)
                letters.back() |= mark;
            else
                letters.push_back(mark);
        }
        return letters;
    }

    /// Of the words in small letters; nothing when they are too few.
    std::optional<double> smallLetter(const ReadLine& line) const
    {
        std::vector<int> all;
        for (const ReadWord& word : line.words) {
            const std::u32string text = fromUtf8(word.text);
            if (std::any_of(text.begin(), text.end(), isCapital) ||
                !std::any_of(text.begin(), text.end(), isLetter))
                continue;
            const std::vector<int> heights = heightsOf(lettersIn(word));
            all.insert(all.end(), heights.begin(), heights.end());
        }
        return smallOf(std::move(all));
    }

private:
    std::vector<cv::Rect> marks_;
};

enum class Capitals { none, first, all };

// Those that may be small letters. A sign before the word would be taken for its first letter.
Capitals capitalsOf(const std::u32string& text)
{
    if (text.empty() || !isCapital(text.front()) || !hasOneShape(text.front()))
        return Capitals::none;
    size_t letters = 0, capitals = 0, alike = 0;
    for (const char32_t c : text) {
        if (isReadable(c) && !isLetter(c))
            return Capitals::none;
        letters += isLetter(c) ? 1 : 0;
        capitals += isCapital(c) ? 1 : 0;
        alike += hasOneShape(c) ? 1 : 0;
    }
    if (capitals == letters)
        return alike == letters ? Capitals::all : Capitals::none;
    return capitals == 1 ? Capitals::first : Capitals::none;
}

void makeSmall(ReadWord& word, const Measure& measure, double smallLetter)
{
    std::u32string text = fromUtf8(word.text);
    const Capitals capitals = capitalsOf(text);
    const std::vector<cv::Rect> letters = measure.lettersIn(word);
    if (capitals == Capitals::none || letters.empty())
        return;
    const std::vector<int> heights = heightsOf(letters);
    const bool isFirst = capitals == Capitals::first;
    const std::optional<double> own = isFirst ? smallOf({heights.begin() + 1, heights.end()}) : std::nullopt;
    const std::optional<int> height =
        isFirst ? firstHeight(letters, word, text.size()) : std::optional<int>(medianOf(heights));
    if (!height || *height > noCapital * own.value_or(smallLetter))
        return;
    std::transform(text.begin(), text.end(), text.begin(), lowercase);
    word.text = toUtf8(text);
}

} // namespace

void makeSmall(ReadPage& page, const Marks& marks)
{
    for (ReadBlock& block : page.blocks) {
        for (ReadLine& line : block) {
            if (line.words.empty() || line.words.front().frame != 0)
                continue;
            const Measure measure(line, marks);
            const std::optional<double> smallLetter = measure.smallLetter(line);
            if (!smallLetter)
                continue;
            for (ReadWord& word : line.words)
                makeSmall(word, measure, *smallLetter);
        }
    }
}

} // namespace mirvak
