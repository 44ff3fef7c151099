#include "SecondOpinion.h"

#include "Boxes.h"
#include "Confidence.h"
#include "LanguageChoice.h"
#include "Type.h"
#include "Unicode.h"

#include <algorithm>
#include <cctype>

namespace mirvak {

namespace {

// Percent. Lines of another script are read with 10 to 70, and worn ones of the model's own seldom with less.
constexpr double weakLine = 72;
constexpr double goodLine = 88; // the same: a line of few characters that is worth no second look
constexpr float weakWord = 65;  // percent; the same for a word
constexpr float sureSign = 85;  // percent, of an ideograph: other scripts give none
constexpr int signShare = 4;    // of a line's words, one in so many: numbers may be the others
// Percent: ideographs look like no letters at all, and to load their model takes as long as to read ten
// lines.
constexpr double noLetters = 50;
constexpr double gain = 8; // percent that another reading must be better by
// Percent that it needs by itself: what is too faint for its own model looks a little like anything to the
// others, most of all Latin letters and Cyrillic ones.
constexpr double trusted = 80;
constexpr double mostKnown =
    0.5;                        // of the letters in words of the page's own language, when it is another one
constexpr double sureName = 92; // percent; a name that no dictionary has is read as surely as a word
constexpr int leastWidth = 2;   // heights of the line: shorter scraps are read well by any model
constexpr int leastLetters = 3;
constexpr int shortLine = 4; // heights of the line

// How much is read again at most, in squares of a line's height: what a page holds counts, not how busy the
// machine is, so that the same picture always gives the same text.
constexpr double leastWork = 600; // about a second
constexpr double workShare = 1.0 / 3;

bool isLatin(const std::string& text)
{
    return std::all_of(text.begin(), text.end(), [](unsigned char c) { return c < 0x80; }) &&
           std::any_of(text.begin(), text.end(), [](unsigned char c) { return std::isalpha(c) != 0; });
}

// A dash looks like the number one.
bool isSureIdeograph(const ReadWord& word)
{
    constexpr char32_t one = 0x4e00, marks = 0xff00;
    const std::u32string text = fromUtf8(word.text);
    return word.confidence >= sureSign && !text.empty() && text.front() > one && text.front() < marks;
}

// Too weak to be right, but in no other script.
bool hasSureIdeographs(const std::vector<ReadWord>& words)
{
    const auto sure = std::count_if(words.begin(), words.end(), isSureIdeograph);
    return sure > 0 && static_cast<size_t>(sure) * signShare >= words.size();
}

double squaresOf(const cv::Rect& part)
{
    return static_cast<double>(part.width) / std::max(1, part.height);
}

double workFor(const ReadPage& page)
{
    double squares = 0;
    for (const ReadBlock& block : page.blocks) {
        for (const ReadLine& line : block)
            squares += squaresOf(rectOf(line.box));
    }
    return leastWork + squares * workShare;
}

// Of one letter there are always words.
double knownShare(const std::vector<ReadWord>& words, const IsWord& isWord)
{
    double known = 0, all = 0;
    for (const ReadWord& word : words) {
        const std::u32string text = fromUtf8(word.text);
        const auto letters = static_cast<double>(std::count_if(text.begin(), text.end(), isReadable));
        all += letters;
        known += letters > 1 && isWord(word.text) ? letters : 0;
    }
    return all > 0 ? known / all : 0;
}

// In a word they stand for letters that the model does not know.
bool hasDigits(const std::vector<ReadWord>& words)
{
    return std::any_of(words.begin(), words.end(), [](const ReadWord& word) {
        return word.text.find_first_of("0123456789") != std::string::npos;
    });
}

// Digits are the same in all scripts, so a number may have been read as letters, but not as more of them.
bool isNumberFor(const std::vector<ReadWord>& words, const std::vector<ReadWord>& old)
{
    const auto textOf = [](const std::vector<ReadWord>& some) {
        std::string text;
        for (const ReadWord& word : some)
            text += word.text;
        return fromUtf8(text);
    };
    const std::u32string number = textOf(words);
    return std::all_of(number.begin(), number.end(), isDigit) && textOf(old).size() <= number.size();
}

IsWord wordsOf(const TextModel& model)
{
    return [&model](const std::string& word) { return model.knows(word); };
}

struct Run
{
    size_t from, to;
};

class Reviewer
{
public:
    Reviewer(const cv::Mat& grey, TextModel& own, Models& models, double work, const Limit& limit)
        : grey_(grey), own_(own), models_(models), work_(work), limit_(limit)
    {
    }

    /// First the line as a whole, then what is still weak in it, or Latin in Chinese.
    void review(ReadLine& line)
    {
        TextModel* model = &own_;
        if (own_.isUnspaced() && line.box.width() < shortLine * line.box.height() &&
            confidenceOf(line.words) < goodLine)
            rereadShort(line);
        if (confidenceOf(line.words) < weakLine && !hasSureIdeographs(line.words))
            model = rereadLine(line);
        std::vector<ReadWord> words;
        const auto append = [&](const std::vector<ReadWord>& more) {
            words.insert(words.end(), more.begin(), more.end());
        };
        size_t next = 0;
        for (const Run& run : runsOf(line, *model)) {
            append(slice(line, next, run.from));
            append(rereadWords(slice(line, run.from, run.to), line.box, *model));
            next = run.to;
        }
        append(slice(line, next, line.words.size()));
        line.words = std::move(words);
    }

private:
    static std::vector<ReadWord> slice(const ReadLine& line, size_t from, size_t to)
    {
        return {line.words.data() + from, line.words.data() + to};
    }

    static std::vector<Run> runsOf(const ReadLine& line, const TextModel& model)
    {
        std::vector<Run> runs;
        for (size_t i = 0; i < line.words.size(); ++i) {
            const ReadWord& word = line.words[i];
            if (model.isUnspaced() ? !isLatin(word.text) : word.confidence >= weakWord)
                continue;
            if (!runs.empty() && runs.back().to == i)
                ++runs.back().to;
            else
                runs.push_back({i, i + 1});
        }
        return runs;
    }

    // The last characters of a paragraph: within a block the recogniser takes its measures from them alone.
    void rereadShort(ReadLine& line)
    {
        const std::vector<ReadWord> words = readRow(own_, rectOf(line.box));
        if (!words.empty() && confidenceOf(words) > confidenceOf(line.words))
            line.words = words;
    }

    TextModel* rereadLine(ReadLine& line)
    {
        TextModel* best = &own_;
        const cv::Rect part = rectOf(line.box);
        double least = std::max(trusted, confidenceOf(line.words) + gain);
        for (const std::string& language : models_.languages()) {
            const std::vector<ReadWord> words = readWith(language, own_, part);
            if (!words.empty() && confidenceOf(words) > least &&
                isBelieved(language, words, own_, line.words)) {
                least = confidenceOf(words);
                line.words = words;
                best = models_.get(language);
            }
        }
        return best;
    }

    std::vector<ReadWord>
    rereadWords(const std::vector<ReadWord>& old, const Box& line, const TextModel& model)
    {
        const cv::Rect part(
            old.front().box.left, line.top, old.back().box.right - old.front().box.left, line.height());
        size_t letters = 0;
        for (const ReadWord& word : old)
            letters += word.text.size();
        const bool isKnown = letters > leastLetters && knownShare(old, wordsOf(model)) == 1;
        if (part.width < leastWidth * part.height || letters < leastLetters || isKnown)
            return old;
        std::vector<ReadWord> best = old;
        const bool latin = model.isUnspaced(); // which English reads best
        double least = std::max(trusted, confidenceOf(old) + (latin ? 0 : gain));
        for (const std::string& language : models_.languages()) {
            if (latin && language != models_.languages().front())
                break;
            if (confidenceOf(old) > noLetters && isUnspaced(language))
                continue;
            const std::vector<ReadWord> words = readWith(language, model, part);
            if (!words.empty() && confidenceOf(words) > least && isBelieved(language, words, model, old)) {
                least = confidenceOf(words);
                best = words;
            }
        }
        return best;
    }

    // A model of ideographs reads Latin letters too, only worse.
    bool isBelieved(const std::string& language,
                    const std::vector<ReadWord>& words,
                    const TextModel& first,
                    const std::vector<ReadWord>& old)
    {
        if (first.isUnspaced())
            return true;
        return isUnspaced(language)
                   ? isIdeographicLine({words, {}})
                   : !losesWords(old, wordsOf(first), words, wordsOf(*models_.get(language)));
    }

    // Nothing when the language is the one that has spoken, or the work is done or the time is over.
    std::vector<ReadWord> readWith(const std::string& language, const TextModel& first, const cv::Rect& part)
    {
        if (language == first.language() || squaresOf(part) > work_ || limit_.isOver())
            return {};
        TextModel* model = models_.get(language);
        return model ? readRow(*model, part) : std::vector<ReadWord>();
    }

    std::vector<ReadWord> readRow(TextModel& model, const cv::Rect& part)
    {
        std::vector<ReadWord> words;
        if (squaresOf(part) > work_)
            return words;
        work_ -= squaresOf(part);
        bool late = false;
        const int margin = part.height / 3;
        const cv::Point origin(part.x - margin, part.y - margin);
        for (const ReadLine& line : model.read(cutOut(grey_, part, margin), origin, Shape::row, limit_, late))
            words.insert(words.end(), line.words.begin(), line.words.end());
        return words;
    }

    const cv::Mat& grey_;
    TextModel& own_;
    Models& models_;
    double work_; ///< left, in squares
    Limit limit_;
};

} // namespace

bool losesWords(const std::vector<ReadWord>& old,
                const IsWord& isWord,
                const std::vector<ReadWord>& other,
                const IsWord& isOthersWord)
{
    const double known = knownShare(old, isWord), others = knownShare(other, isOthersWord);
    return (known > mostKnown && known >= others) ||
           (others == 0 && (confidenceOf(other) < sureName ||
                            (!hasDigits(old) && hasDigits(other) && !isNumberFor(other, old))));
}

void askOthers(ReadPage& page,
               const cv::Mat& grey,
               TextModel& own,
               Models& models,
               const Limit& limit,
               const Stretch& stretch)
{
    Reviewer reviewer(grey, own, models, workFor(page), limit);
    size_t lines = 0, done = 0;
    for (const ReadBlock& block : page.blocks)
        lines += block.size();
    for (ReadBlock& block : page.blocks) {
        for (ReadLine& line : block) {
            reviewer.review(line);
            stretch.reach(static_cast<double>(++done) / static_cast<double>(lines));
        }
    }
}

} // namespace mirvak
