#include "AreaReader.h"

#include "Boxes.h"
#include "Confidence.h"
#include "LanguageChoice.h"
#include "PageMap.h"
#include "PartedWords.h"
#include "Strips.h"
#include "TornAreas.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace mirvak {

namespace {

constexpr double guessed = 60; // percent; what is read with less is worse than nothing
constexpr double gain = 60;    // that a strip must be better by: two letters

double worthOf(const std::vector<ReadWord>& words)
{
    double worth = 0;
    for (const ReadWord& word : words)
        worth += static_cast<double>(word.text.size()) * (static_cast<double>(word.confidence) - guessed);
    return worth;
}

double worthOf(const ReadBlock& lines)
{
    double worth = 0;
    for (const ReadLine& line : lines)
        worth += worthOf(line.words);
    return worth;
}

Box scaled(const Box& box, double factor)
{
    const auto at = [factor](int edge) { return cvRound(edge * factor); };
    return {at(box.left), at(box.top), at(box.right), at(box.bottom)};
}

// The marks of other lines become foreign, because a strip shows their feet.
TextArea areaOf(const Strip& strip, const TextArea& area, const ReadBlock& lines, const Marks& marks)
{
    TextArea part{strip.box, area.foreign, false};
    for (size_t i = 0; i < lines.size(); ++i) {
        if (std::binary_search(strip.lines.begin(), strip.lines.end(), i) ||
            (rectOf(lines[i].box) & strip.box).empty())
            continue;
        for (const cv::Rect& mark : marks.boxes) {
            const cv::Point middle = (mark.tl() + mark.br()) / 2;
            const auto isOf = [&](const ReadWord& word) { return rectOf(word.box).contains(middle); };
            if (!(mark & strip.box).empty() &&
                std::any_of(lines[i].words.begin(), lines[i].words.end(), isOf))
                part.foreign.push_back(mark);
        }
    }
    return part;
}

} // namespace

Box withoutRules(const Box& word, const Marks& marks)
{
    if (word.height() * 2 < marks.height)
        return word;
    const cv::Rect box = rectOf(word);
    cv::Rect own;
    for (const cv::Rect& mark : marks.boxes) {
        if (box.contains((mark.tl() + mark.br()) / 2))
            own |= mark;
    }
    return own.empty() ? word : boxOf(own & box);
}

Homography homographyOf(const cv::Matx33d& matrix)
{
    Homography values{};
    std::copy(matrix.val, matrix.val + values.size(), values.begin());
    return values;
}

AreaReader::AreaReader(TextModel& model, const cv::Mat& grey, const PlainPicture& plain, const Marks& marks)
    : model_(model), grey_(grey), plain_(plain), marks_(marks), margin_(std::max(4, marks.height / 2))
{
}

void AreaReader::readAsWhole(ReadPage& page, const Limit& limit, const Stretch& stretch)
{
    bool late = false;
    const ReadBlock lines = readWhole(limit, late, stretch);
    std::vector<TextArea> areas = areasOf(marks_);
    joinTornAreas(areas, lines);
    std::vector<ReadBlock> blocks = partWords(lines, areas, marks_.height);
    for (size_t i = 0; i < areas.size(); ++i) {
        if (areas[i].isSideways) {
            readSideways(areas[i], page, limit);
            continue;
        }
        fillIn(blocks[i], areas[i], limit);
        page.blocks.push_back(std::move(blocks[i]));
    }
}

void AreaReader::readByAreas(ReadPage& page, const Limit& limit, const Stretch& stretch)
{
    const std::vector<TextArea> areas = areasOf(marks_);
    double whole = 0, done = 0; // pixels
    for (const TextArea& area : areas)
        whole += area.box.area();
    bool late = false;
    for (size_t i = 0; i < areas.size() && !late; ++i) {
        const double from = std::exchange(done, done + areas[i].box.area());
        if (areas[i].isSideways)
            readSideways(areas[i], page, limit);
        else {
            ReadBlock lines = readAlone(areas[i], limit, late, stretch.part(from / whole, done / whole));
            readLost(lines, areas[i], limit);
            page.blocks.push_back(std::move(lines));
        }
    }
}

ReadBlock AreaReader::readWhole(const Limit& limit, bool& late, const Stretch& stretch)
{
    ReadBlock lines = model_.readPage(plain_.grey, plain_.dpi, limit, late, stretch);
    const double factor = static_cast<double>(grey_.cols) / plain_.grey.cols;
    for (ReadLine& line : lines) {
        for (ReadWord& word : line.words)
            word.box = withoutRules(scaled(word.box, factor), marks_);
        line.box = boxAround(line.words);
    }
    return lines;
}

// Paper where other areas reach into this one.
cv::Mat AreaReader::pictureOf(const TextArea& area) const
{
    cv::Mat cut = cutOut(grey_, area.box, margin_);
    const cv::Point origin = area.box.tl() - cv::Point(margin_, margin_);
    for (const cv::Rect& mark : area.foreign)
        cut((mark - origin) & cv::Rect({0, 0}, cut.size())).setTo(255);
    return cut;
}

ReadBlock AreaReader::readAlone(const TextArea& area, const Limit& limit, bool& late, const Stretch& stretch)
{
    const cv::Point origin = area.box.tl() - cv::Point(margin_, margin_);
    return model_.read(pictureOf(area), origin, Shape::block, limit, late, stretch);
}

void AreaReader::fillIn(ReadBlock& lines, const TextArea& area, const Limit& limit)
{
    ReadBlock kept;
    std::vector<bool> isGone(lines.size(), false);
    for (const Strip& strip : leftOut(area, lines, marks_)) {
        bool late = false;
        ReadBlock again = readAlone(areaOf(strip, area, lines, marks_), limit, late, {});
        double before = 0;
        for (const size_t line : strip.lines)
            before += worthOf(lines[line].words);
        if (late || worthOf(again) < before + gain)
            continue;
        for (const size_t line : strip.lines)
            isGone[line] = true;
        std::move(again.begin(), again.end(), std::back_inserter(kept));
    }
    for (size_t i = 0; i < lines.size(); ++i) {
        if (!isGone[i])
            kept.push_back(std::move(lines[i]));
    }
    sortFromTheTop(kept);
    lines = std::move(kept);
}

// Of a few lines of several sizes the recogniser may drop one as a whole, sharp as it is. To read the others
// again would not make them better.
void AreaReader::readLost(ReadBlock& lines, const TextArea& area, const Limit& limit)
{
    ReadBlock lost;
    for (const Strip& strip : lostLines(area, lines, marks_)) {
        bool late = false;
        ReadBlock again = readAlone(areaOf(strip, area, lines, marks_), limit, late, {});
        if (!late && worthOf(again) >= gain)
            std::move(again.begin(), again.end(), std::back_inserter(lost));
    }
    std::move(lost.begin(), lost.end(), std::back_inserter(lines));
    sortFromTheTop(lines);
}

// Lines that run upward or downward are read in the way in which they are read best. For the running text
// their words have the place of the whole, and a frame of their own tells where they lie in it.
void AreaReader::readSideways(const TextArea& area, ReadPage& page, const Limit& limit)
{
    const cv::Mat picture = pictureOf(area);
    ReadBlock best;
    cv::Matx33d frame = cv::Matx33d::eye();
    double most = 0;
    for (const int turn : {cv::ROTATE_90_COUNTERCLOCKWISE, cv::ROTATE_90_CLOCKWISE}) {
        cv::Mat turned;
        cv::rotate(picture, turned, turn);
        bool late = false;
        ReadBlock block = model_.read(turned, {}, Shape::block, limit, late);
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
    for (ReadLine& line : best) {
        line.box = boxOf(area.box);
        for (ReadWord& word : line.words) {
            word.lying = std::exchange(word.box, boxOf(area.box));
            word.frame = static_cast<int>(page.frames.size());
        }
    }
    const cv::Point origin = area.box.tl() - cv::Point(margin_, margin_);
    page.frames.push_back(homographyOf(cv::Matx33d(1, 0, origin.x, 0, 1, origin.y, 0, 0, 1) * frame));
    page.blocks.push_back(std::move(best));
}

} // namespace mirvak
