#include "PageReader.h"

#include "AreaReader.h"
#include "Bearing.h"
#include "GlyphCheck.h"
#include "Initials.h"
#include "LanguageChoice.h"
#include "LostNumbers.h"
#include "OtherOrder.h"
#include "PagePicture.h"
#include "Scraps.h"
#include "SecondOpinion.h"
#include "SingleThread.h"
#include "SmallLetters.h"
#include "WordCheck.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <utility>

namespace mirvak {

namespace {

using std::chrono::seconds;

// A dense page takes two seconds on a desktop and perhaps eight on a small board.
constexpr seconds glanceTime(6), readingTime(45), doubtfulTime(6), otherOrderTime(12), opinionTime(12),
    glyphTime(6), wordTime(6);

// Heights of a small letter, px: below, strokes run together; above, there is only more to compute.
constexpr int smallest = 11, wanted = 13, largest = 70, enough = 40;
constexpr double largestFactor = 2.5;
constexpr double mostPixels = 30e6; // after scaling up
constexpr int leastHeight = 3;      // nothing smaller is a letter at any scale

// Percent of the whole at which the steps begin.
constexpr double blocksFrom = 15, opinionsFrom = 80, wholePage = 99;

// Of the glance: below the first, it is no writing in any of the languages; below the second it may be a
// picture.
constexpr double leastConfidence = 40, doubtfully = 60;

/// A page as it is read.
struct Sheet
{
    PagePicture picture;
    PlainPicture plain;
    Marks marks;
    Glance glance;
};

// The recogniser would read lone dust of the plain picture, too, and take it for signs.
void takeOutDust(PlainPicture& plain, const Marks& marks)
{
    for (const cv::Rect& speck : marks.dust)
        plain.grey(speck).setTo(255);
}

Marks fitScale(PagePicture& picture, PlainPicture& plain)
{
    Marks marks = cleanMarks(picture.grey);
    takeOutDust(plain, marks);
    double factor = 1;
    if (marks.height >= leastHeight && marks.height < smallest)
        factor = std::min({largestFactor,
                           static_cast<double>(wanted) / marks.height,
                           std::max(1.0, std::sqrt(mostPixels / static_cast<double>(picture.grey.total())))});
    else if (marks.height > largest)
        factor = static_cast<double>(enough) / marks.height;
    if (factor == 1)
        return marks;
    scalePage(picture, factor);
    Marks scaled = cleanMarks(picture.grey);
    for (const cv::Rect& rule : marks.rules) // they are gone from the picture
        scaled.rules.emplace_back(cvRound(rule.x * factor),
                                  cvRound(rule.y * factor),
                                  cvRound(rule.width * factor),
                                  std::max(1, cvRound(rule.height * factor)));
    return scaled;
}

Sheet turned(const Sheet& sheet, int quarterTurns)
{
    Sheet other = sheet;
    if (quarterTurns != 0) {
        turnPage(other.picture, quarterTurns);
        cv::rotate(sheet.plain.grey, other.plain.grey, quarterTurns - 1);
        other.marks = cleanMarks(other.picture.grey);
    }
    return other;
}

// The way in which the sheet is read best. A sure reading ends the search; upright comes first.
void setUpright(Sheet& sheet, Models& models, const Limit& limit)
{
    const Bearing bearing = bearingOf(sheet.marks);
    std::vector<int> turns{0, 2, 1, 3};
    if (bearing == Bearing::across)
        turns = {0, 2};
    else if (bearing == Bearing::upward)
        turns = {1, 3};
    const Sheet start = sheet;
    for (const int turn : turns) {
        Sheet candidate = turned(start, turn);
        candidate.glance = chooseLanguage(candidate.picture.grey, candidate.marks, models, limit);
        if (!sheet.glance.model || candidate.glance.confidence > sheet.glance.confidence)
            sheet = std::move(candidate);
        if (!sheet.glance.model || isSure(sheet.glance))
            return;
    }
}

bool isDoubtful(const Sheet& sheet)
{
    return sheet.glance.confidence < doubtfully;
}

// Of what may be no page at all the first areas are enough, and small print is read best when it was scaled
// up.
bool isReadAsWhole(const Sheet& sheet)
{
    return !sheet.glance.model->isUnspaced() && !isDoubtful(sheet) &&
           sheet.picture.grey.cols <= sheet.plain.grey.cols;
}

void readText(const Sheet& sheet, ReadPage& page, const Limit& limit, const Stretch& stretch)
{
    TextModel& model = *sheet.glance.model;
    AreaReader reader(model, sheet.picture.grey, sheet.plain, sheet.marks);
    if (isReadAsWhole(sheet)) {
        reader.readAsWhole(page, limit, stretch);
    } else {
        reader.readByAreas(page, limit, stretch);
        tryOtherOrder(page, sheet.picture.grey, model, limit.within(otherOrderTime));
    }
    if (model.isUnspaced())
        return;
    checkWords(page, sheet.picture.grey, model, limit.within(wordTime));
    readInitials(page, sheet.plain, sheet.marks, model, limit.within(wordTime));
}

} // namespace

Reading PageReader::read(const std::string& picturePath, ReadPage& page)
{
    const SingleThread single;
    std::optional<PagePicture> picture = openPage(picturePath);
    if (!picture)
        return Reading::noPicture;
    Sheet sheet{std::move(*picture), {}, {}, {}};
    sheet.plain = {sheet.picture.grey.clone(), sheet.picture.dpi};
    sheet.marks = fitScale(sheet.picture, sheet.plain);
    if (sheet.marks.boxes.empty())
        return Reading::noText;
    const Limit limit{Limit::Clock::now(), &watch_.stopped};
    setUpright(sheet, models_, limit.within(glanceTime));
    if (watch_.stopped)
        return Reading::late;
    if (!sheet.glance.model)
        return Reading::noModel;
    if (sheet.glance.confidence < leastConfidence)
        return Reading::noText;
    page = {sheet.picture.grey.cols,
            sheet.picture.grey.rows,
            sheet.picture.dpi,
            sheet.glance.model->language(),
            {}};
    page.toPicture = homographyOf(sheet.picture.toPicture);
    page.pictureWidth = sheet.picture.picture.width;
    page.pictureHeight = sheet.picture.picture.height;
    const Limit reading = limit.within(isDoubtful(sheet) ? doubtfulTime : readingTime);
    readText(sheet, page, reading, {watch_, blocksFrom, opinionsFrom});
    askOthers(page,
              sheet.picture.grey,
              *sheet.glance.model,
              models_,
              limit.within(opinionTime),
              {watch_, opinionsFrom, wholePage});
    findLostNumbers(page, sheet.picture.grey, *sheet.glance.model, models_, limit.within(wordTime));
    makeSmall(page, sheet.marks);
    if (const GlyphBook* book = models_.glyphs(page.language))
        checkGlyphs(page, sheet.picture.grey, *book, [checking = limit.within(glyphTime)] {
            return checking.isOver();
        });
    dropScraps(page, sheet.marks.height);
    if (page.blocks.empty() || watch_.stopped)
        return reading.isOver() ? Reading::late : Reading::noText;
    return Reading::ok;
}

} // namespace mirvak
