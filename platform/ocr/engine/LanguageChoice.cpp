#include "LanguageChoice.h"

#include "Confidence.h"
#include "Rows.h"
#include "ScriptLook.h"
#include "Unicode.h"

#include <opencv2/core.hpp>

#include <algorithm>
#include <numeric>

namespace mirvak {

namespace {

constexpr double surely = 85; // a model reads what it was made for with 88 to 97, other scripts with 10 to 70
constexpr double poorly = 75; // so does a model the script of another one
constexpr int enoughLetters = 8; // to tell the script that a model was made for from another one
constexpr int sampleCount = 3;   // rows
constexpr int sampleLength = 30; // heights of a mark: about six words

// Nothing read is no confidence: a scrap of a row counts by the part of it that was read.
double confidenceOf(const ReadBlock& lines, const cv::Rect& row)
{
    std::vector<ReadWord> words;
    int covered = 0;
    for (const ReadLine& line : lines) {
        words.insert(words.end(), line.words.begin(), line.words.end());
        for (const ReadWord& word : line.words)
            covered += word.box.width();
    }
    return confidenceOf(words) * std::min(1.0, 1.5 * covered / row.width);
}

ScriptLook scriptOf(const std::string& language)
{
    static const char* const cyrillic[] = {
        "bel", "bul", "kaz", "kir", "mkd", "mon", "rus", "srp", "tgk", "ukr"};
    static const char* const ideographs[] = {"chi_", "jpn"};
    const auto named = [&](const char* name) { return language.rfind(name, 0) == 0; };
    if (std::any_of(std::begin(cyrillic), std::end(cyrillic), named))
        return ScriptLook::cyrillic;
    return std::any_of(std::begin(ideographs), std::end(ideographs), named) ? ScriptLook::ideographs
                                                                            : ScriptLook::latin;
}

// Those whose script the page seems to be in, then those that are quick to load.
std::vector<std::string> inOrder(std::vector<std::string> languages, ScriptLook look)
{
    std::stable_partition(languages.begin(), languages.end(), [](const std::string& language) {
        return scriptOf(language) != ScriptLook::ideographs;
    });
    std::stable_partition(languages.begin(), languages.end(), [&](const std::string& language) {
        return scriptOf(language) == look;
    });
    return languages;
}

/// One model and the rows that it has read.
class Trial
{
public:
    Trial(TextModel& model, const cv::Mat& grey, const std::vector<cv::Rect>& rows, int margin)
        : model_(model), grey_(grey), rows_(rows), margin_(margin)
    {
    }

    bool isComplete() const { return each_.size() == rows_.size(); }
    void readNext(const Limit& limit)
    {
        const cv::Rect& row = rows_[each_.size()];
        bool late = false;
        const ReadBlock lines = model_.read(cutOut(grey_, row, margin_), row.tl(), Shape::row, limit, late);
        each_.push_back(confidenceOf(lines, row));
        note(lines);
    }
    /// One row may be no text at all: the least sure one does not count.
    Glance glance() const
    {
        std::vector<double> each = each_;
        std::sort(each.begin(), each.end());
        if (each.size() == sampleCount)
            each.erase(each.begin());
        const double sum = std::accumulate(each.begin(), each.end(), 0.0);
        return {&model_, each.empty() ? 0 : sum / static_cast<double>(each.size())};
    }
    /// Nothing that is still to be read would change it. What a model writes in letters of another script
    /// than its own proves nothing.
    bool isDecided() const
    {
        const bool enough = isComplete() || each_.size() + 1 == sampleCount;
        return enough && isSure(glance()) && (!hasOwnScript() || own_ * 2 > letters_);
    }
    /// Another model is tried first: this one reads poorly, or writes in another script than its own.
    bool isUnlikely() const
    {
        const bool isPoor = !each_.empty() && *std::max_element(each_.begin(), each_.end()) < poorly;
        return isPoor || (hasOwnScript() && letters_ >= enoughLetters && own_ * 2 <= letters_);
    }

private:
    bool hasOwnScript() const { return scriptOf(model_.language()) != ScriptLook::latin; }
    void note(const ReadBlock& lines)
    {
        const bool ideographs = scriptOf(model_.language()) == ScriptLook::ideographs;
        for (const ReadLine& line : lines) {
            for (const ReadWord& word : line.words) {
                for (const char32_t c : fromUtf8(word.text)) {
                    letters_ += isReadable(c) ? 1 : 0;
                    own_ += (ideographs ? isIdeographic(c) : isCyrillic(c)) ? 1 : 0;
                }
            }
        }
    }

    TextModel& model_;
    const cv::Mat& grey_;
    const std::vector<cv::Rect>& rows_;
    int margin_;
    std::vector<double> each_; ///< confidence of the rows read so far
    int letters_ = 0, own_ = 0;
};

// Reads what was left out, first with those that have read best so far.
Glance bestOf(std::vector<Trial>& trials, const Limit& limit)
{
    std::vector<Trial*> order;
    order.reserve(trials.size());
    for (Trial& trial : trials)
        order.push_back(&trial);
    std::stable_sort(order.begin(), order.end(), [](const Trial* a, const Trial* b) {
        return a->glance().confidence > b->glance().confidence;
    });
    Glance best;
    for (Trial* trial : order) {
        while (!trial->isComplete())
            trial->readNext(limit);
        if (trial->isDecided())
            return trial->glance();
        if (!best.model || trial->glance().confidence > best.confidence)
            best = trial->glance();
    }
    return best;
}

} // namespace

cv::Mat cutOut(const cv::Mat& grey, const cv::Rect& part, int margin)
{
    cv::Mat cut;
    cv::copyMakeBorder(grey(part & cv::Rect(0, 0, grey.cols, grey.rows)),
                       cut,
                       margin,
                       margin,
                       margin,
                       margin,
                       cv::BORDER_CONSTANT | cv::BORDER_ISOLATED,
                       cv::Scalar(255));
    return cut;
}

bool isSure(const Glance& glance)
{
    return glance.confidence >= surely;
}

Glance chooseLanguage(const cv::Mat& grey, const Marks& marks, Models& models, const Limit& limit)
{
    const std::vector<cv::Rect> rows = sampleRows(marks, sampleCount, sampleLength * marks.height);
    std::vector<Trial> trials;
    for (const std::string& language : inOrder(models.languages(), scriptLookOf(marks))) {
        if (limit.isOver()) // loading a model takes its time too
            break;
        TextModel* model = models.get(language);
        if (!model)
            continue;
        Trial trial(*model, grey, rows, marks.height);
        while (!trial.isComplete() && !trial.isUnlikely()) {
            trial.readNext(limit);
            if (trial.isDecided())
                return trial.glance();
        }
        trials.push_back(std::move(trial));
    }
    return bestOf(trials, limit);
}

} // namespace mirvak
