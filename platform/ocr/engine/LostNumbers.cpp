#include "LostNumbers.h"

#include "Boxes.h"
#include "LanguageChoice.h"
#include "Unicode.h"

#include <algorithm>
#include <optional>

namespace mirvak {

namespace {

constexpr float weak = 65, sure = 85; // percent: of such a sign, and of the number in its place
constexpr double asHigh = 0.7;        // of the line: a digit
constexpr double asWide = 0.6;        // of its height: two strokes; one is a sign
constexpr int reach = 5;              // heights of the line: by itself a number is read badly
constexpr int mostOnPage = 8;

// What one model reads in the word's place.
std::optional<ReadWord> numberAt(
    const ReadWord& word, const ReadLine& line, const cv::Mat& grey, TextModel& model, const Limit& limit)
{
    const int height = line.box.height(), margin = height / 3;
    const cv::Rect part =
        rectOf(line.box) &
        cv::Rect(word.box.left - reach * height, line.box.top, word.box.width() + 2 * reach * height, height);
    bool late = false;
    const ReadBlock rows = model.read(
        cutOut(grey, part, margin), part.tl() - cv::Point(margin, margin), Shape::row, limit, late);
    for (const ReadLine& row : rows) {
        for (const ReadWord& other : row.words) {
            const std::u32string text = fromUtf8(other.text);
            if (other.confidence >= sure && std::all_of(text.begin(), text.end(), isDigit) &&
                2 * (rectOf(other.box) & rectOf(word.box)).area() > rectOf(word.box).area())
                return other;
        }
    }
    return std::nullopt;
}

} // namespace

bool isLostNumber(const ReadWord& word, const ReadLine& line)
{
    const std::u32string text = fromUtf8(word.text);
    return word.frame == 0 && word.confidence < weak && std::none_of(text.begin(), text.end(), isReadable) &&
           word.box.height() >= asHigh * line.box.height() && word.box.width() >= asWide * word.box.height();
}

void findLostNumbers(
    ReadPage& page, const cv::Mat& grey, const TextModel& own, Models& models, const Limit& limit)
{
    int left = mostOnPage;
    for (ReadBlock& block : page.blocks) {
        for (ReadLine& line : block) {
            for (ReadWord& word : line.words) {
                if (!isLostNumber(word, line) || --left < 0 || limit.isOver())
                    continue;
                for (const std::string& language : models.languages()) {
                    TextModel* model =
                        language == own.language() || isUnspaced(language) ? nullptr : models.get(language);
                    const auto number = model ? numberAt(word, line, grey, *model, limit) : std::nullopt;
                    if (!number)
                        continue;
                    word.text = number->text;
                    word.confidence = number->confidence;
                    break;
                }
            }
        }
    }
}

} // namespace mirvak
