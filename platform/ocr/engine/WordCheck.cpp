#include "WordCheck.h"

#include "Boxes.h"
#include "LanguageChoice.h"
#include "Unicode.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <set>

namespace mirvak {

namespace {

// Percent of confidence.
constexpr float weak = 80, weakUnknown = 93; // of a word to look at: any, one that no dictionary has
constexpr float sure = 90, verySure = 94;    // that a word needs by itself
constexpr float clearly = 15, slightly = 2;  // that it must be better by
constexpr float sureNumber = 96;
constexpr size_t longWord = 3; // letters
constexpr float misread = 50;  // of a dictionary's word that was another one
constexpr float worn = 60;     // below, the marks beside the word may be wrong together with its letters

// In squares of a line's height: at most so many, and so much of what the page's lines hold.
constexpr double leastWork = 60, workShare = 1.0 / 12;

/// A word and the marks around it.
struct Parts
{
    explicit Parts(const std::string& utf8)
    {
        const std::u32string text = fromUtf8(utf8);
        const auto first = std::find_if(text.begin(), text.end(), isReadable);
        const auto last = std::find_if(text.rbegin(), std::make_reverse_iterator(first), isReadable).base();
        before.assign(text.begin(), first);
        word.assign(first, last);
        behind.assign(last, text.end());
    }

    std::u32string before, word, behind;
};

// Capitals differ from small letters by their size alone, some letters by their dots.
std::u32string folded(std::u32string text)
{
    constexpr char32_t io = 0x451, ie = 0x435;
    for (char32_t& c : text) {
        c = lowercase(c);
        c = c == io ? ie : c;
    }
    return text;
}

bool isPartOf(const std::u32string& all, const std::u32string& some)
{
    auto at = all.begin();
    return std::all_of(some.begin(), some.end(), [&](char32_t c) {
        at = std::find(at, all.end(), c);
        return at != all.end() && at++ != all.end();
    });
}

bool hasDigit(const std::u32string& text)
{
    return std::any_of(text.begin(), text.end(), isDigit);
}

// With less, most readings by themselves are as good as those in the line.
bool isWeak(const ReadWord& word, const TextModel& model)
{
    return word.confidence < weak || (word.confidence < weakUnknown && !model.knows(word.text));
}

// Read twice alike. A few letters may be dust both times.
bool isConfirmed(const ReadWord& word, const ReadWord& alone, const TextModel& model)
{
    return alone.confidence >= sure && alone.confidence > word.confidence &&
           Parts(word.text).word.size() >= longWord && model.knows(word.text);
}

/// Reads words by themselves as long as there is work left.
class Reader
{
public:
    Reader(const cv::Mat& grey, TextModel& model, const Limit& limit)
        : grey_(grey), model_(model), limit_(limit)
    {
    }

    /// Nothing when it is no single word.
    std::optional<ReadWord> read(const ReadWord& word, const ReadLine& line)
    {
        const cv::Rect part(word.box.left, line.box.top, word.box.width(), line.box.height());
        const int margin = part.height / 3;
        bool late = false;
        const ReadBlock rows = model_.read(
            cutOut(grey_, part, margin), part.tl() - cv::Point(margin, margin), Shape::row, limit_, late);
        if (rows.size() != 1 || rows.front().words.size() != 1)
            return std::nullopt;
        return rows.front().words.front();
    }

private:
    const cv::Mat& grey_;
    TextModel& model_;
    Limit limit_;
};

} // namespace

bool isPutRight(const ReadWord& inLine, const ReadWord& alone, const IsWord& isWord)
{
    const Parts old(inLine.text), now(alone.text);
    const float before = inLine.confidence, after = alone.confidence;
    if (old.word.empty() || now.word.empty() || after < sure || !isPartOf(old.before, now.before) ||
        !isPartOf(old.behind, now.behind))
        return false;
    const bool hasSameMarks = old.before == now.before && old.behind == now.behind;
    if (folded(old.word) == folded(now.word))
        return old.word == now.word && !hasSameMarks && before < weak && after >= verySure &&
               after >= before + clearly;
    if ((!hasSameMarks && before >= worn) || now.word.size() + 1 < old.word.size())
        return false;
    if (hasDigit(now.word))
        return before < weak && after >= sureNumber;
    if (!isWord(alone.text))
        return false;
    return isWord(inLine.text) ? before < misread && after >= verySure : after >= before + slightly;
}

void checkWords(ReadPage& page, const cv::Mat& grey, TextModel& model, const Limit& limit)
{
    struct Weak
    {
        ReadWord* word;
        const ReadLine* line;
        double work;
    };
    std::vector<Weak> found;
    double work = leastWork;
    for (ReadBlock& block : page.blocks) {
        for (ReadLine& line : block) {
            const double height = std::max(1, line.box.height());
            work += workShare * line.box.width() / height;
            for (ReadWord& word : line.words) {
                if (word.frame == 0 && isWeak(word, model))
                    found.push_back({&word, &line, word.box.width() / height + 1});
            }
        }
    }
    std::stable_sort(found.begin(), found.end(), [](const Weak& a, const Weak& b) {
        return a.word->confidence < b.word->confidence;
    });
    Reader reader(grey, model, limit);
    std::set<std::string> confirmed; // names come again and again
    for (const Weak& weakest : found) {
        if (confirmed.count(weakest.word->text) > 0 && !model.knows(weakest.word->text))
            continue;
        work -= weakest.work;
        if (work < 0 || limit.isOver())
            return;
        const std::optional<ReadWord> alone = reader.read(*weakest.word, *weakest.line);
        if (alone && alone->text == weakest.word->text) {
            if (isConfirmed(*weakest.word, *alone, model))
                weakest.word->confidence = alone->confidence;
            confirmed.insert(alone->text);
        }
        if (!alone ||
            !isPutRight(*weakest.word, *alone, [&](const std::string& text) { return model.knows(text); }))
            continue;
        weakest.word->text = alone->text;
        weakest.word->confidence = alone->confidence;
    }
}

} // namespace mirvak
