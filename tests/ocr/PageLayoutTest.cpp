#include "Bearing.h"
#include "Columns.h"
#include "Marks.h"
#include "Rows.h"
#include "ScriptLook.h"

#include <gtest/gtest.h>
#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>

using mirvak::Marks;

namespace {

constexpr int height = 16, step = 12, rowPitch = 40;

/// Rows of letter-sized boxes in words of five, as wide as `letters` allows.
void addText(Marks& marks, int left, int top, int rows, int letters)
{
    marks.height = height;
    for (int row = 0; row < rows; ++row) {
        for (int i = 0; i < letters; ++i) {
            if (i % 6 != 5)
                marks.boxes.emplace_back(left + i * step, top + row * rowPitch, step - 3, height);
        }
    }
}

Marks turned(const Marks& marks)
{
    Marks other;
    other.height = marks.height;
    for (const cv::Rect& box : marks.boxes)
        other.boxes.emplace_back(box.y, box.x, box.height, box.width);
    return other;
}

cv::Mat drawn(const Marks& marks, const cv::Size& size)
{
    cv::Mat page(size, CV_8UC1, cv::Scalar(255));
    for (const cv::Rect& box : marks.boxes)
        cv::rectangle(page, box, 20, cv::FILLED);
    return page;
}

size_t inkIn(const cv::Mat& page, const cv::Rect& part)
{
    return static_cast<size_t>(cv::countNonZero(page(part) < 128));
}

// Each is told by its left upper corner.
std::vector<cv::Point> placesOf(const Marks& marks)
{
    std::vector<cv::Point> places;
    for (const mirvak::TextArea& area : mirvak::areasOf(marks))
        places.push_back(area.box.tl());
    return places;
}

using Places = std::vector<cv::Point>;

} // namespace

TEST(PageLayout, ColumnsOfProseAreReadOneAfterTheOther)
{
    Marks marks;
    addText(marks, 400, 60, 1, 60); // a heading over both
    addText(marks, 100, 200, 12, 45);
    addText(marks, 800, 200, 12, 45);
    addText(marks, 100, 900, 3, 95); // a foot below both
    EXPECT_EQ(placesOf(marks), (Places{{400, 60}, {100, 200}, {800, 200}, {100, 900}}));
}

TEST(PageLayout, NarrowGuttersPartWhatStandsOnOtherLines)
{
    Marks marks; // a gutter as wide as two words stand apart in a line that is set wide
    addText(marks, 100, 200, 20, 35);
    addText(marks, 100 + 35 * step + 24, 213, 20, 35);
    addText(marks, 100 + 70 * step + 48, 200, 20, 35);
    EXPECT_EQ(placesOf(marks), (Places{{100, 200}, {544, 213}, {988, 200}}));
}

TEST(PageLayout, APageNumberBelongsToNoColumn)
{
    Marks marks;
    addText(marks, 800, 100, 1, 14); // a running head
    addText(marks, 100, 200, 12, 45);
    addText(marks, 800, 200, 12, 45);
    addText(marks, 350, 760, 1, 2); // below the left column
    EXPECT_EQ(placesOf(marks), (Places{{800, 100}, {100, 200}, {800, 200}, {350, 760}}));
}

TEST(PageLayout, AHeadingWhoseWordsPartAboveTheGutterIsOneLine)
{
    const auto page = [](int size, int gap) {
        Marks marks;
        addText(marks, 100, 200, 20, 45);
        addText(marks, 100 + 45 * step + gap, 200, 20, 45);
        const int gutter = 100 + 45 * step;
        for (int i = 0; i < 8; ++i) {
            const int left = i < 4 ? gutter - (4 - i) * (size + 4) : gutter + gap + (i - 4) * (size + 4);
            marks.boxes.emplace_back(left, 80, size, size);
        }
        return placesOf(marks);
    };
    EXPECT_EQ(page(40, 22), (Places{{100 + 45 * step - 176, 80}, {100, 200}, {100 + 45 * step + 22, 200}}));
    EXPECT_EQ(page(20, 22).size(), 4U) << "each column has a heading as small as that";
}

TEST(PageLayout, AHeadingInLargeLettersIsReadByItself)
{
    Marks marks;
    addText(marks, 100, 200, 12, 45);
    for (int i = 0; i < 8; ++i)
        marks.boxes.emplace_back(100 + i * 36, 150, 30, 32);
    EXPECT_EQ(placesOf(marks), (Places{{100, 150}, {100, 200}}));
}

TEST(PageLayout, ACaptionInTheGutterFollowsTheColumns)
{
    Marks marks;
    addText(marks, 100, 100, 8, 50);
    addText(marks, 100, 100 + 8 * rowPitch, 6, 30); // beside a picture
    addText(marks, 100, 100 + 14 * rowPitch, 8, 50);
    addText(marks, 760, 100, 8, 50);
    addText(marks, 1000, 100 + 8 * rowPitch, 6, 30);
    addText(marks, 760, 100 + 14 * rowPitch, 8, 50);
    addText(marks, 600, 110 + 13 * rowPitch, 1, 24);
    EXPECT_EQ(placesOf(marks), (Places{{100, 100}, {760, 100}, {600, 110 + 13 * rowPitch}}));
    for (const mirvak::TextArea& area : mirvak::areasOf(marks)) {
        const auto reaching = std::count_if(marks.boxes.end() - 20, marks.boxes.end(), [&](const auto& mark) {
            return !(mark & area.box).empty();
        });
        EXPECT_EQ(static_cast<long>(area.foreign.size()), area.box.x == 600 ? 0 : reaching);
    }
}

TEST(PageLayout, WornColumnsAreReadOneAfterTheOther)
{
    Marks marks;
    for (const int left : {100, 800}) {
        for (int row = 0; row < 14; ++row) { // in each line another word is gone
            const int gone = 7 * row % 8;
            addText(marks, left, 200 + row * rowPitch, 1, gone * 6);
            addText(marks, left + (gone + 1) * 6 * step, 200 + row * rowPitch, 1, 48 - (gone + 1) * 6);
        }
    }
    const auto areas = mirvak::areasOf(marks);
    const auto across = std::count_if(areas.begin(), areas.end(), [](const auto& area) {
        return area.box.x < 700 && area.box.br().x > 800;
    });
    EXPECT_EQ(across, 0);
    EXPECT_TRUE(std::is_sorted(areas.begin(), areas.end(), [](const auto& a, const auto& b) {
        return (a.box.x < 700) > (b.box.x < 700);
    })) << "the left column first";
}

TEST(PageLayout, AStrokeInTheMarginJoinsNoColumn)
{
    Marks marks;
    addText(marks, 100, 200, 24, 45);
    addText(marks, 700, 700, 12, 45);           // below a picture
    marks.boxes.emplace_back(680, 290, 24, 50); // a stroke of it, as high as two lines
    marks.boxes.emplace_back(680, 522, 24, 14); // and a blot on a line's level
    const auto areas = mirvak::areasOf(marks);
    EXPECT_TRUE(std::none_of(areas.begin(), areas.end(), [](const auto& area) {
        return area.box.x < 600 && area.box.br().x > 680;
    })) << "the columns are read as one";
}

TEST(PageLayout, FootnotesBelongToTheirColumns)
{
    Marks marks;
    addText(marks, 100, 200, 12, 45);
    addText(marks, 800, 200, 12, 45);
    Marks two = marks, one = marks;
    addText(two, 124, 780, 1, 20); // indented
    addText(two, 824, 780, 1, 25);
    EXPECT_EQ(placesOf(two), (Places{{100, 200}, {124, 780}, {800, 200}, {824, 780}}));
    addText(one, 100, 780, 1, 20);
    EXPECT_EQ(placesOf(one).back(), cv::Point(100, 780)) << "a running foot";
    one.rules.emplace_back(100, 755, 200, 2);
    EXPECT_EQ(placesOf(one), (Places{{100, 200}, {100, 780}, {800, 200}})) << "below a short rule, a note";
}

TEST(PageLayout, NamesFarApartBelowEachOtherAreATable)
{
    Marks table;
    table.height = height;
    for (int row = 0; row < 14; ++row) {
        addText(table, 100, 100 + row * 60, 1, 16 + row % 3);
        addText(table, 500, 100 + row * 60, 1, 17 - row % 2);
        addText(table, 900, 100 + row * 60, 1, 4);
    }
    EXPECT_EQ(placesOf(table), (Places{{100, 100}}));
}

TEST(PageLayout, ADotAtTheEndOfTheLongestLineIsRead)
{
    Marks marks;
    addText(marks, 100, 200, 6, 45);
    const cv::Rect stop(100 + 45 * step + 2, 212, 4, 4), accent(110, 191, 5, 3);
    marks.boxes.push_back(stop);
    marks.boxes.push_back(accent);
    marks.boxes.emplace_back(100, 120, 4, 4); // dirt
    const auto areas = mirvak::areasOf(marks);
    ASSERT_EQ(areas.size(), 1U);
    EXPECT_EQ(areas[0].box & stop, stop);
    EXPECT_EQ(areas[0].box & accent, accent);
    EXPECT_GT(areas[0].box.y, 150);
}

TEST(PageLayout, HeightsTellTheScript)
{
    Marks latin, cyrillic, ideographs, capitals;
    for (int i = 0; i < 400; ++i) {
        latin.boxes.emplace_back(i * step, 100, 9, i % 5 < 2 ? 22 : 16);
        cyrillic.boxes.emplace_back(i * step, 100, 9, i % 7 < 1 ? 22 : 16);
        ideographs.boxes.emplace_back(i * step, 100, 9, 12 + 7 * i % 20);
        capitals.boxes.emplace_back(i * step, 100, 9, 16);
    }
    for (Marks* marks : {&latin, &cyrillic, &ideographs, &capitals})
        marks->height = height;
    using mirvak::ScriptLook;
    EXPECT_EQ(mirvak::scriptLookOf(latin), ScriptLook::latin);
    EXPECT_EQ(mirvak::scriptLookOf(cyrillic), ScriptLook::cyrillic);
    EXPECT_EQ(mirvak::scriptLookOf(ideographs), ScriptLook::ideographs);
    EXPECT_EQ(mirvak::scriptLookOf(capitals), ScriptLook::latin) << "no guess";
    EXPECT_EQ(mirvak::scriptLookOf({}), ScriptLook::latin);
}

TEST(PageLayout, ARuleEndsTheColumnsAboveIt)
{
    Marks marks;
    addText(marks, 100, 100, 9, 45);
    addText(marks, 800, 100, 9, 45);
    addText(marks, 100, 600, 9, 45);
    addText(marks, 800, 600, 9, 45);
    EXPECT_EQ(placesOf(marks).at(1).x, 100) << "without a rule a column goes on";
    marks.rules.emplace_back(90, 520, 1300, 3);
    EXPECT_EQ(placesOf(marks), (Places{{100, 100}, {800, 100}, {100, 600}, {800, 600}}));
    for (int y = 500; y < 580; y += 10)
        marks.rules.emplace_back(90, y, 1300, 1);
    EXPECT_EQ(placesOf(marks).at(1).x, 100) << "lined paper";
}

TEST(PageLayout, RowsOfTablesAndFormsAreReadAcross)
{
    Marks table;
    for (const int left : {100, 300, 700, 900})
        addText(table, left, 100, 15, left == 300 ? 25 : 6);
    EXPECT_EQ(placesOf(table), (Places{{100, 100}}));
    Marks list; // numbers before their text
    addText(list, 100, 100, 12, 2);
    addText(list, 160, 100, 12, 60);
    EXPECT_EQ(placesOf(list), (Places{{100, 100}}));
    EXPECT_TRUE(mirvak::areasOf({}).empty());
}

TEST(PageLayout, AddressesAndNotesStandByThemselves)
{
    Marks letter;
    for (const int left : {100, 900}) {
        for (const int row : {0, 1, 2, 3})
            addText(letter, left, 100 + row * rowPitch, 1, 14 + 5 * (row % 3));
    }
    addText(letter, 100, 500, 12, 100);
    EXPECT_EQ(placesOf(letter), (Places{{100, 100}, {900, 100}, {100, 500}}));
    Marks notes; // smaller and on lines of their own
    addText(notes, 400, 100, 25, 70);
    for (const int top : {113, 153, 513, 553})
        addText(notes, 100, top, 1, 15);
    EXPECT_EQ(placesOf(notes).back(), cv::Point(400, 100));
    for (const mirvak::TextArea& area : mirvak::areasOf(notes))
        EXPECT_TRUE(area.box.x == 400 || area.box.br().x < 400) << "no note within a line";
}

TEST(PageLayout, LinesThatRunUpwardAreReadByThemselves)
{
    Marks side, marks;
    addText(side, 100, 0, 1, 40);
    addText(marks, 100, 100, 14, 60);
    for (const cv::Rect& box : turned(side).boxes)
        marks.boxes.push_back(box + cv::Point(1000, 0));
    const std::vector<mirvak::TextArea> areas = mirvak::areasOf(marks);
    ASSERT_EQ(areas.size(), 2U);
    EXPECT_FALSE(areas[0].isSideways);
    EXPECT_TRUE(areas[1].isSideways);
    EXPECT_LT(areas[0].box.br().x, 1000);
}

TEST(PageLayout, RowsRunThereWhereLettersAreNear)
{
    Marks marks;
    addText(marks, 100, 100, 20, 50);
    EXPECT_EQ(mirvak::bearingOf(marks), mirvak::Bearing::across);
    EXPECT_EQ(mirvak::bearingOf(turned(marks)), mirvak::Bearing::upward);
    EXPECT_EQ(mirvak::bearingOf({}), mirvak::Bearing::unclear);
    Marks note;
    addText(note, 100, 1200, 4, 50);
    const std::vector<cv::Rect> upward = turned(note).boxes;
    marks.boxes.insert(marks.boxes.end(), upward.begin(), upward.end());
    EXPECT_EQ(mirvak::bearingOf(marks), mirvak::Bearing::across) << "as most of it";
}

TEST(PageLayout, SamplesAreCutBetweenWords)
{
    Marks marks;
    addText(marks, 100, 100, 20, 50);
    const std::vector<cv::Rect> samples = mirvak::sampleRows(marks, 3, 300);
    ASSERT_EQ(samples.size(), 3U);
    for (const cv::Rect& sample : samples) {
        EXPECT_LE(sample.width, 300);
        EXPECT_EQ((sample.width + 3 + step) % (6 * step), 0) << "whole words";
    }
    EXPECT_LT(samples[0].y + 100, samples[2].y) << "from different places";
    EXPECT_TRUE(mirvak::sampleRows({}, 3, 300).empty());
}

TEST(PageLayout, SamplesFollowLinesThatBend)
{
    Marks marks;
    addText(marks, 100, 100, 20, 80);
    for (cv::Rect& box :
         marks.boxes) // as in an open book: each line lies in the height of the next, further on
        box.y += box.x * box.x / 5000;
    const std::vector<cv::Rect> samples = mirvak::sampleRows(marks, 3, 300);
    ASSERT_EQ(samples.size(), 3U);
    for (const cv::Rect& sample : samples) {
        EXPECT_GT(sample.width, 100);
        EXPECT_LE(sample.height, 4 * height);
    }
}

TEST(PageMarks, SpecksRulesAndPicturesGo)
{
    Marks text;
    addText(text, 120, 120, 10, 40);
    cv::Mat page = drawn(text, {900, 900});
    const cv::Mat clean = page.clone();
    for (int i = 0; i < 3000; ++i)
        page.at<unsigned char>(3 + i * 7 % 890, 3 + i * 13 % 890) = 0;
    cv::rectangle(page, {100, 100, 620, 440}, 30, 2); // a frame around the text
    cv::line(page, {100, 147}, {720, 147}, 30, 2);
    cv::circle(page, {400, 720}, 110, 60, cv::FILLED);
    cv::rectangle(page, {0, 0, 30, 900}, 40, cv::FILLED); // the desk beside the page
    const Marks marks = mirvak::cleanMarks(page);
    EXPECT_NEAR(marks.height, height, 1);
    EXPECT_NEAR(static_cast<double>(marks.boxes.size()), static_cast<double>(text.boxes.size()), 5);
    EXPECT_EQ(inkIn(page, {0, 560, 900, 340}), 0U) << "picture";
    EXPECT_EQ(inkIn(page, {0, 0, 100, 900}), 0U) << "desk";
    EXPECT_EQ(inkIn(page, {115, 146, 580, 3}), 0U) << "rule";
    EXPECT_NEAR(static_cast<double>(cv::countNonZero(page < 128)),
                static_cast<double>(cv::countNonZero(clean < 128)),
                0.02 * cv::countNonZero(clean < 128));
}

TEST(PageMarks, LoneSpecksGoAndDotsStay)
{
    Marks text;
    addText(text, 120, 60, 8, 40);
    const cv::Mat clean = drawn(text, {900, 500});
    cv::Mat page = clean.clone();
    const auto speck = [&](int x, int y, int side, int level) {
        cv::rectangle(page, {x - 1, y - 1, side + 2, side + 2}, 225, cv::FILLED); // its soft rim
        cv::rectangle(page, {x, y, side, side}, level, cv::FILLED);
    };
    const cv::Rect margin(640, 0, 260, 500), below(0, 380, 640, 30);
    speck(660, 70, 4, 40);
    speck(800, 200, 3, 120);
    speck(300, 390, 4, 40);
    for (const cv::Point at : {cv::Point(700, 300), {714, 304}}) { // dust lies in pairs, too
        cv::rectangle(page, cv::Rect(at, cv::Size(4, 4)), 40, cv::FILLED);
        page.at<unsigned char>(at + cv::Point(3, 12)) = 150; // grain, as there is everywhere
    }
    cv::rectangle(page, {590, 440, 4, 18}, 215, cv::FILLED); // a faded letter, of which a dot has stayed
    const std::vector<cv::Rect> signs{{450, 430, 3, 3}, {450, 439, 3, 3}, {520, 450, 8, 2}, {597, 452, 3, 3}};
    for (const cv::Rect& sign : signs) // a colon and a dash by themselves, and that dot
        cv::rectangle(page, sign, 20, cv::FILLED);
    const int stop = 120 + 39 * step; // behind the last letter of a line
    cv::rectangle(page, {stop + step, 72, 4, 4}, 20, cv::FILLED);
    for (int i = 0; i < 12; ++i) // leads the eye to a number
        cv::rectangle(page, {200 + i * 14, 450, 3, 3}, 20, cv::FILLED);
    cv::Mat plain = page.clone();
    for (const cv::Rect& dust : mirvak::cleanMarks(page).dust)
        plain(dust).setTo(255);
    EXPECT_EQ(inkIn(page, margin), 0U);
    EXPECT_EQ(inkIn(plain, margin), 0U);
    EXPECT_EQ(cv::countNonZero(page(cv::Rect(650, 60, 200, 160)) < 255), 0) << "nor their soft rims";
    for (const cv::Rect& sign : signs) {
        EXPECT_EQ(inkIn(page, sign), static_cast<size_t>(sign.area())) << sign;
        EXPECT_EQ(inkIn(plain, sign), static_cast<size_t>(sign.area())) << sign;
    }
    EXPECT_EQ(cv::countNonZero(page(below) < 255), 0);
    EXPECT_EQ(inkIn(page, {stop + step, 72, 4, 4}), 16U);
    EXPECT_EQ(inkIn(page, {190, 440, 200, 30}), 12U * 9U);
}

// A sky that is white paper here and there, with branches before it, between print and faint print.
TEST(PageMarks, PalePicturesGoAsAWholeAndFaintPrintStays)
{
    Marks text;
    addText(text, 120, 60, 8, 40);
    cv::Mat page = drawn(text, {900, 1000});
    const cv::Rect place(200, 420, 400, 260);
    for (int y = place.y; y < place.br().y; ++y) {
        for (int x = place.x; x < place.br().x; ++x)
            page.at<unsigned char>(y, x) = cv::saturate_cast<unsigned char>(
                238 + 20 * std::sin(x / 40.0) + 12 * std::sin(y / 23.0 + x / 90.0));
    }
    for (int i = 0; i < 9; ++i)
        cv::ellipse(page, {260 + i % 3 * 140, 480 + i / 3 * 70}, {38, 14}, 20 * i, 0, 300, 120, 3);
    Marks faint;
    addText(faint, 120, 740, 6, 40);
    for (const cv::Rect& box : faint.boxes)
        cv::rectangle(page, box, 175, cv::FILLED);
    const Marks marks = mirvak::cleanMarks(page);
    EXPECT_EQ(cv::countNonZero(page(place) < 250), 0);
    EXPECT_EQ(marks.boxes.size(), text.boxes.size() + faint.boxes.size());
}

// Its strokes stand below each other like lines of print.
TEST(PageMarks, HatchedPicturesGoAsAWhole)
{
    Marks text;
    addText(text, 120, 60, 8, 40);
    cv::Mat page = drawn(text, {900, 1000});
    const cv::Rect place(200, 420, 420, 260);
    cv::rectangle(page, place, 190, cv::FILLED);
    for (int i = 0; i < 150; ++i)
        cv::rectangle(page, {place.x + 12 + i % 5 * 80, place.y + 10 + i / 5 * 8, 66, 3}, 60, cv::FILLED);
    const Marks marks = mirvak::cleanMarks(page);
    EXPECT_EQ(marks.boxes.size(), text.boxes.size());
    EXPECT_EQ(inkIn(page, place), 0U);
}

TEST(PageMarks, DotsOverLettersStayWhereThereIsDirt)
{
    Marks text;
    addText(text, 120, 120, 10, 40);
    cv::Mat page = drawn(text, {900, 900});
    const cv::Rect dot(120 + 7 * step + 2, 120 + 4 * rowPitch - 11, 4, 4);
    cv::rectangle(page, dot, 20, cv::FILLED);
    const int dotted = static_cast<int>(inkIn(page, dot));
    for (int i = 0; i < 1500; ++i) // a screened picture
        cv::rectangle(page, {20 + i % 50 * 17, 600 + i / 50 * 9, 4, 3}, 60, cv::FILLED);
    mirvak::cleanMarks(page);
    EXPECT_EQ(static_cast<int>(inkIn(page, dot)), dotted);
    EXPECT_EQ(inkIn(page, {0, 590, 900, 310}), 0U);
}

TEST(PageMarks, LightPrintOnABarIsTurnedOver)
{
    Marks text;
    addText(text, 120, 220, 10, 40);
    cv::Mat page = drawn(text, {900, 900});
    cv::rectangle(page, {100, 100, 620, 60}, 70, cv::FILLED);
    for (int i = 0; i < 20; ++i)
        cv::rectangle(page, {130 + i * 20, 122, 12, 16}, 250, cv::FILLED);
    const Marks marks = mirvak::cleanMarks(page);
    EXPECT_EQ(
        std::count_if(marks.boxes.begin(), marks.boxes.end(), [](const cv::Rect& b) { return b.y < 160; }),
        20);
    EXPECT_LT(page.at<unsigned char>(130, 136), 100) << "a letter";
    EXPECT_GT(page.at<unsigned char>(108, 136), 230) << "the bar";
}

TEST(PageMarks, EmptyPagesHaveNone)
{
    for (const int level : {255, 128, 0}) {
        cv::Mat page(400, 300, CV_8UC1, cv::Scalar(level));
        EXPECT_TRUE(mirvak::cleanMarks(page).boxes.empty()) << level;
    }
}
