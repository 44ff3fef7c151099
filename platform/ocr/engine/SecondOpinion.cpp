#include "SecondOpinion.h"

#include "Confidence.h"
#include "LanguageChoice.h"

#include <algorithm>
#include <cctype>

namespace mirvak {

namespace {

constexpr float weak = 65;    // percent; a word of the model's own language is seldom below
constexpr double gain = 8;    // percent that another reading must be better by
constexpr int leastWidth = 2; // heights of the line: shorter scraps are read well by any model
constexpr int leastLetters = 3;

bool isLatin(const std::string& text)
{
    return std::all_of(text.begin(), text.end(), [](unsigned char c) { return c < 0x80; }) &&
           std::any_of(text.begin(), text.end(), [](unsigned char c) { return std::isalpha(c) != 0; });
}

struct Run
{
    size_t from, to;
    bool latin; ///< all of it is Latin on a page of another writing
};

class Reviewer
{
public:
    Reviewer(const cv::Mat& grey, TextModel& own, Models& models, TextModel::Deadline deadline)
        : grey_(grey), own_(own), models_(models), deadline_(deadline)
    {
    }

    void review(ReadLine& line)
    {
        std::vector<ReadWord> words;
        const auto append = [&](const std::vector<ReadWord>& more) {
            words.insert(words.end(), more.begin(), more.end());
        };
        size_t next = 0;
        for (const Run& run : runsOf(line)) {
            append(slice(line, next, run.from));
            append(reread(slice(line, run.from, run.to), run.latin, line.box));
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

    std::vector<Run> runsOf(const ReadLine& line) const
    {
        if (own_.isUnspaced() && confidenceOf(line.words) < weak)
            return {{0, line.words.size(), false}};
        std::vector<Run> runs;
        for (size_t i = 0; i < line.words.size(); ++i) {
            const ReadWord& word = line.words[i];
            const bool wanted = own_.isUnspaced() ? isLatin(word.text) : word.confidence < weak;
            if (!wanted)
                continue;
            if (!runs.empty() && runs.back().to == i)
                ++runs.back().to;
            else
                runs.push_back({i, i + 1, own_.isUnspaced()});
        }
        return runs;
    }

    std::vector<ReadWord> reread(const std::vector<ReadWord>& old, bool latin, const Box& line)
    {
        const cv::Rect part(
            old.front().box.left, line.top, old.back().box.right - old.front().box.left, line.height());
        size_t letters = 0;
        for (const ReadWord& word : old)
            letters += word.text.size();
        if (part.width < leastWidth * part.height || letters < leastLetters)
            return old;
        std::vector<ReadWord> best = old;
        double least = confidenceOf(old) + (latin ? 0 : gain);
        for (const std::string& language : models_.languages()) {
            if (language == own_.language() || (latin && language != models_.languages().front()))
                continue;
            const std::vector<ReadWord> words = readWith(language, part);
            if (!words.empty() && confidenceOf(words) > least) {
                least = confidenceOf(words);
                best = words;
            }
        }
        return best;
    }

    std::vector<ReadWord> readWith(const std::string& language, const cv::Rect& part)
    {
        std::vector<ReadWord> words;
        if (std::chrono::steady_clock::now() >= deadline_)
            return words;
        TextModel* model = models_.get(language);
        if (!model)
            return words;
        bool late = false;
        const int margin = part.height / 3;
        const cv::Point origin(part.x - margin, part.y - margin);
        for (const ReadLine& line :
             model->read(cutOut(grey_, part, margin), origin, Shape::row, deadline_, late))
            words.insert(words.end(), line.words.begin(), line.words.end());
        return words;
    }

    const cv::Mat& grey_;
    TextModel& own_;
    Models& models_;
    TextModel::Deadline deadline_;
};

} // namespace

void askOthers(
    ReadPage& page, const cv::Mat& grey, TextModel& own, Models& models, TextModel::Deadline deadline)
{
    Reviewer reviewer(grey, own, models, deadline);
    for (ReadBlock& block : page.blocks) {
        for (ReadLine& line : block)
            reviewer.review(line);
    }
}

} // namespace mirvak
