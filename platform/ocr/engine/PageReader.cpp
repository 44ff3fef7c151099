#include "PageReader.h"

#include "Bearing.h"
#include "Columns.h"
#include "Confidence.h"
#include "GlyphCheck.h"
#include "LanguageChoice.h"
#include "OtherOrder.h"
#include "PageMap.h"
#include "PagePicture.h"
#include "Scraps.h"
#include "SecondOpinion.h"
#include "SingleThread.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <utility>

namespace mirvak {

namespace {

using std::chrono::seconds;

// A dense page takes two seconds on a desktop and perhaps eight on a small board.
constexpr seconds glanceTime(6), readingTime(45), doubtfulTime(6), otherOrderTime(12), opinionTime(12),
    glyphTime(6);

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
    Marks marks;
    Glance glance;
};

Marks fitScale(PagePicture& picture)
{
    Marks marks = cleanMarks(picture.grey);
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

// Paper where other areas reach into this one.
cv::Mat pictureOf(const TextArea& area, const cv::Mat& grey, int margin)
{
    cv::Mat cut = cutOut(grey, area.box, margin);
    const cv::Point origin = area.box.tl() - cv::Point(margin, margin);
    for (const cv::Rect& mark : area.foreign)
        cut((mark - origin) & cv::Rect({0, 0}, cut.size())).setTo(255);
    return cut;
}

Homography homographyOf(const cv::Matx33d& matrix)
{
    Homography values{};
    std::copy(matrix.val, matrix.val + values.size(), values.begin());
    return values;
}

// Lines that run upward or downward are read in the way in which they are read best. For the running text
// their words have the place of the whole; `frame` receives the way from their own places to `picture`.
ReadBlock readSideways(
    TextModel& model, const cv::Mat& picture, const TextArea& area, const Limit& limit, cv::Matx33d& frame)
{
    ReadBlock best;
    double most = 0;
    for (const int turn : {cv::ROTATE_90_COUNTERCLOCKWISE, cv::ROTATE_90_CLOCKWISE}) {
        cv::Mat turned;
        cv::rotate(picture, turned, turn);
        bool late = false;
        ReadBlock block = model.read(turned, {}, Shape::block, limit, late);
        double sum = 0;
        for (ReadLine& line : block)
            sum += confidenceOf(line.words) / static_cast<double>(block.size());
        if (sum > most) {
            most = sum;
            best = std::move(block);
            const double degrees = turn == cv::ROTATE_90_CLOCKWISE ? 90 : -90;
            frame = pageMap::turnedBack(degrees, picture.size(), turned.size());
        }
    }
    const Box place{area.box.x, area.box.y, area.box.br().x, area.box.br().y};
    for (ReadLine& line : best) {
        line.box = place;
        for (ReadWord& word : line.words)
            word.lying = std::exchange(word.box, place);
    }
    return best;
}

/// Adds a block whose words lie in a frame of their own.
void addInFrame(ReadPage& page, ReadBlock block, const cv::Matx33d& toPage)
{
    for (ReadLine& line : block) {
        for (ReadWord& word : line.words)
            word.frame = static_cast<int>(page.frames.size());
    }
    page.frames.push_back(homographyOf(toPage));
    page.blocks.push_back(std::move(block));
}

void readBlocks(Sheet& sheet, ReadPage& page, const Limit& limit, const Stretch& stretch)
{
    TextModel& model = *sheet.glance.model;
    const int margin = std::max(4, sheet.marks.height / 2);
    const std::vector<TextArea> areas = areasOf(sheet.marks);
    double whole = 0, done = 0; // pixels
    for (const TextArea& area : areas)
        whole += area.box.area();
    for (const TextArea& area : areas) {
        bool late = false;
        const double from = std::exchange(done, done + area.box.area());
        const cv::Mat picture = pictureOf(area, sheet.picture.grey, margin);
        const cv::Point origin = area.box.tl() - cv::Point(margin, margin);
        if (area.isSideways) {
            cv::Matx33d frame = cv::Matx33d::eye();
            ReadBlock block = readSideways(model, picture, area, limit, frame);
            addInFrame(page, std::move(block), cv::Matx33d(1, 0, origin.x, 0, 1, origin.y, 0, 0, 1) * frame);
        } else
            page.blocks.push_back(model.read(
                picture, origin, Shape::block, limit, late, stretch.part(from / whole, done / whole)));
        if (late)
            break;
    }
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
    const bool doubtful = sheet.glance.confidence < doubtfully;
    const Limit reading = limit.within(doubtful ? doubtfulTime : readingTime);
    readBlocks(sheet, page, reading, {watch_, blocksFrom, opinionsFrom});
    tryOtherOrder(page, sheet.picture.grey, *sheet.glance.model, limit.within(otherOrderTime));
    askOthers(page,
              sheet.picture.grey,
              *sheet.glance.model,
              models_,
              limit.within(opinionTime),
              {watch_, opinionsFrom, wholePage});
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
