#include "LanguageChoice.h"

#include "Confidence.h"
#include "Rows.h"

#include <opencv2/core.hpp>

#include <algorithm>
#include <numeric>

namespace mirvak {

namespace {

constexpr double surely = 85; // a model reads what it was made for with 88 to 97, other scripts with 10 to 70
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

double glanceWith(
    TextModel& model, const cv::Mat& grey, const std::vector<cv::Rect>& rows, int margin, const Limit& limit)
{
    std::vector<double> each;
    for (const cv::Rect& row : rows) {
        bool late = false;
        each.push_back(
            confidenceOf(model.read(cutOut(grey, row, margin), row.tl(), Shape::row, limit, late), row));
    }
    // One row may be no text at all.
    std::sort(each.begin(), each.end());
    if (each.size() == sampleCount)
        each.erase(each.begin());
    return each.empty() ? 0
                        : std::accumulate(each.begin(), each.end(), 0.0) / static_cast<double>(each.size());
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
    Glance best;
    for (const std::string& language : models.languages()) {
        if (limit.isOver()) // loading a model takes its time too
            break;
        TextModel* model = models.get(language);
        if (!model)
            continue;
        const Glance glance{model, glanceWith(*model, grey, rows, marks.height, limit)};
        if (!best.model || glance.confidence > best.confidence)
            best = glance;
        if (isSure(best))
            break;
    }
    return best;
}

} // namespace mirvak
