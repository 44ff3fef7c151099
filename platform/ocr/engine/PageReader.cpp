#include "PageReader.h"

#include "Bearing.h"
#include "Columns.h"
#include "Confidence.h"
#include "LanguageChoice.h"
#include "PagePicture.h"
#include "SecondOpinion.h"
#include "SingleThread.h"

#include <algorithm>
#include <cstdio>

namespace mirvak {

namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;
using Clock = std::chrono::steady_clock;

// A dense page takes two seconds on a desktop and perhaps eight on a small board.
constexpr seconds glanceTime(6), readingTime(45);
constexpr double opinionShare = 0.15; // of the reading time

// Heights of a small letter, px: below, strokes run together; above, there is only more to compute.
constexpr int smallest = 11, wanted = 13, largest = 70, enough = 40;
constexpr double largestFactor = 2.5;
constexpr int leastHeight = 3; // nothing smaller is a letter at any scale

constexpr double leastConfidence = 35; // of the glance: below, it is no writing in any of the languages
constexpr double leastOfLine = 35, leastOfScrap = 60;

/// A page as it is read.
struct Sheet
{
    PagePicture picture;
    Marks marks;
    Glance glance;
};

Marks fitScale(PagePicture& picture)
{
    Marks marks = cleanMarks(picture.grey);
    double factor = 1;
    if (marks.height >= leastHeight && marks.height < smallest)
        factor = std::min(largestFactor, static_cast<double>(wanted) / marks.height);
    else if (marks.height > largest)
        factor = static_cast<double>(enough) / marks.height;
    if (factor == 1)
        return marks;
    scalePage(picture, factor);
    return cleanMarks(picture.grey);
}

Sheet turned(const Sheet& sheet, int quarterTurns)
{
    Sheet other = sheet;
    if (quarterTurns != 0) {
        turnPage(other.picture, quarterTurns);
        other.marks = cleanMarks(other.picture.grey);
    }
    return other;
}

// The way in which the sheet is read best. A sure reading ends the search; upright comes first.
void setUpright(Sheet& sheet, Models& models)
{
    const Bearing bearing = bearingOf(sheet.marks);
    std::vector<int> turns{0, 2, 1, 3};
    if (bearing == Bearing::across)
        turns = {0, 2};
    else if (bearing == Bearing::upward)
        turns = {1, 3};
    const Sheet start = sheet;
    const auto deadline = Clock::now() + glanceTime;
    for (const int turn : turns) {
        Sheet candidate = turned(start, turn);
        candidate.glance = chooseLanguage(candidate.picture.grey, candidate.marks, models, deadline);
        if (!sheet.glance.model || candidate.glance.confidence > sheet.glance.confidence)
            sheet = std::move(candidate);
        if (!sheet.glance.model || isSure(sheet.glance))
            return;
    }
}

bool hasLetter(const ReadLine& line)
{
    return std::any_of(line.words.begin(), line.words.end(), [](const ReadWord& word) {
        return std::any_of(word.text.begin(), word.text.end(), [](unsigned char c) {
            return c >= 0x80 || std::isalnum(c) != 0;
        });
    });
}

// What is left of rules, logos and signatures.
void dropScraps(ReadPage& page)
{
    for (ReadBlock& block : page.blocks) {
        block.erase(std::remove_if(block.begin(),
                                   block.end(),
                                   [](const ReadLine& line) {
                                       const double least = hasLetter(line) ? leastOfLine : leastOfScrap;
                                       return confidenceOf(line.words) < least;
                                   }),
                    block.end());
    }
    page.blocks.erase(std::remove_if(page.blocks.begin(),
                                     page.blocks.end(),
                                     [](const ReadBlock& block) { return block.empty(); }),
                      page.blocks.end());
}

Reading readBlocks(Sheet& sheet, ReadPage& page, TextModel::Deadline deadline)
{
    TextModel& model = *sheet.glance.model;
    const int margin = std::max(4, sheet.marks.height / 2);
    bool late = false;
    for (const cv::Rect& block : blocksOf(sheet.marks)) {
        page.blocks.push_back(model.read(cutOut(sheet.picture.grey, block, margin),
                                         block.tl() - cv::Point(margin, margin),
                                         Shape::block,
                                         deadline,
                                         late));
        if (late)
            break;
    }
    dropScraps(page);
    if (!page.blocks.empty())
        return Reading::ok;
    return late ? Reading::late : Reading::noText;
}

} // namespace

Reading PageReader::read(const std::string& picturePath, ReadPage& page)
{
    const SingleThread single;
    std::optional<PagePicture> picture = openPage(picturePath);
    if (!picture)
        return Reading::noPicture;
    Sheet sheet{std::move(*picture), {}, {}};
    sheet.marks = fitScale(sheet.picture);
    if (sheet.marks.boxes.empty())
        return Reading::noText;
    setUpright(sheet, models_);
    if (!sheet.glance.model)
        return Reading::noModel;
    if (sheet.glance.confidence < leastConfidence)
        return Reading::noText;
    page = {sheet.picture.grey.cols,
            sheet.picture.grey.rows,
            sheet.picture.dpi,
            sheet.glance.model->language(),
            {}};
    const auto start = Clock::now();
    const Reading result = readBlocks(sheet, page, start + readingTime);
    const auto spent = std::chrono::duration_cast<milliseconds>(Clock::now() - start);
    const auto opinionTime =
        milliseconds(static_cast<long>(opinionShare * static_cast<double>(spent.count())));
    askOthers(page, sheet.picture.grey, *sheet.glance.model, models_, Clock::now() + opinionTime);
    return result;
}

} // namespace mirvak
