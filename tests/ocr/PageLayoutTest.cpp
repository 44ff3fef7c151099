#include "Columns.h"
#include "Pieces.h"
#include "TestMarks.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace testMarks;
using mirvak::Marks;

namespace {

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
    for (size_t i = 0; i < marks.boxes.size(); ++i) { // numbers and capitals are as tall as the tall letters
        cv::Rect& box = marks.boxes[i];
        if (box.y == 100 || box.y == 760 || i % 5 == 0)
            box.height += 8;
    }
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
    EXPECT_EQ(page(30, 21).size(), 3U) << "letters set wide";
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

TEST(PageLayout, ACaptionInTheGutterFollowsTheColumnsBelowAHeadingToo)
{
    Marks marks;
    addText(marks, 300, 20, 1, 60);
    addText(marks, 100, 100, 8, 50);
    addText(marks, 100, 100 + 8 * rowPitch, 6, 30); // beside a picture
    addText(marks, 100, 100 + 14 * rowPitch, 8, 50);
    addText(marks, 760, 100, 8, 50);
    addText(marks, 1000, 100 + 8 * rowPitch, 6, 30);
    addText(marks, 760, 100 + 14 * rowPitch, 8, 50);
    addText(marks, 600, 110 + 13 * rowPitch, 1, 24);
    EXPECT_EQ(placesOf(marks), (Places{{300, 20}, {100, 100}, {760, 100}, {600, 110 + 13 * rowPitch}}));
    for (const mirvak::TextArea& area : mirvak::areasOf(marks)) {
        const auto reaching = std::count_if(marks.boxes.end() - 20, marks.boxes.end(), [&](const auto& mark) {
            return !(mark & area.box).empty();
        });
        EXPECT_EQ(static_cast<long>(area.foreign.size()), area.box.x == 600 ? 0 : reaching);
    }
}

TEST(PageLayout, ACaptionOfTwoLinesCloseToItsColumnsPartsThem)
{
    const auto page = [](int gap) {
        Marks marks;
        addText(marks, 300, 40, 1, 50); // a heading
        addText(marks, 100, 160, 8, 53);
        addText(marks, 100, 160 + 8 * rowPitch, 8, 29);
        addText(marks, 100, 160 + 16 * rowPitch, 8, 53);
        const int caption = 100 + 29 * step + gap, right = caption + 53 * step + gap;
        addText(marks, right - 24 * step, 160, 8, 53);
        addText(marks, right, 160 + 8 * rowPitch, 8, 29);
        addText(marks, right - 24 * step, 160 + 16 * rowPitch, 8, 53);
        addText(marks, caption, 165 + 14 * rowPitch, 2, 53);
        return placesOf(marks);
    };
    for (const int gap : {22, 28}) {
        const Places places = page(gap);
        ASSERT_EQ(places.size(), 4U) << gap;
        EXPECT_EQ(places[1], cv::Point(100, 160));
        EXPECT_EQ(places[2].y, 160);
        EXPECT_EQ(places[3].y, 165 + 14 * rowPitch);
    }
}

TEST(PageLayout, ALongLineAboveAShortOneIsNotParted)
{
    Marks marks; // beside a picture the column gets narrower; its last long line has a wide space there
    addText(marks, 100, 100, 8, 53);
    addText(marks, 100, 100 + 8 * rowPitch, 1, 29);
    addText(marks, 100 + 29 * step + 20, 100 + 8 * rowPitch, 1, 22);
    addText(marks, 100, 100 + 9 * rowPitch, 8, 29);
    EXPECT_EQ(placesOf(marks), (Places{{100, 100}}));
    const std::vector<mirvak::Piece> pieces = mirvak::piecesOf(marks).all;
    EXPECT_EQ(pieces.size(), 17U) << "each line is one";
}

TEST(PageLayout, WhiteOverWhichALineGoesIsNoGutter)
{
    const auto linesOf = [](int indent) {
        Marks marks;
        addText(marks, 100, 100, 1, 29);
        addText(marks, 100 + 29 * step + 20, 100, 1, 22);
        addText(marks, 100, 100 + rowPitch, 4, 29);
        addText(marks, 100 + indent * step, 100 + 5 * rowPitch, 1, 40);
        return mirvak::piecesOf(marks).all.size();
    };
    EXPECT_EQ(linesOf(8), 6U);
    EXPECT_EQ(linesOf(40), 7U) << "where none does, it is one";
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
    Marks ideographs = letter; // in one row they are all made of flat strokes
    for (const cv::Rect& box : letter.boxes) {
        if (box.y == 100 + rowPitch && box.x < 800)
            ideographs.boxes.emplace_back(box.x, box.y + 9, box.width, 6);
    }
    for (cv::Rect& box : ideographs.boxes)
        box.height = box.y == 100 + rowPitch && box.x < 800 ? 6 : box.height;
    EXPECT_EQ(placesOf(ideographs), placesOf(letter));
    Marks notes; // smaller and on lines of their own
    addText(notes, 400, 100, 25, 70);
    for (const int top : {113, 153, 513, 553})
        addText(notes, 100, top, 1, 15);
    EXPECT_EQ(placesOf(notes).back(), cv::Point(400, 100));
    for (const mirvak::TextArea& area : mirvak::areasOf(notes))
        EXPECT_TRUE(area.box.x == 400 || area.box.br().x < 400) << "no note within a line";
}

TEST(PageLayout, TheDateAndTheSubjectFollowTheAddresses)
{
    Marks letter; // whose lines are long and stand far apart, on the same levels
    for (int row = 0; row < 16; ++row) {
        const int down = row * 52;
        if (row < 4) {
            for (const int left : {100, 900})
                addText(letter, left, 100 + down, 1, 29 - 2 * (row % 3));
        }
        addText(letter, 100, 700 + down, 1, 120);
    }
    addText(letter, 1100, 420, 1, 12);
    addText(letter, 100, 560, 1, 20);
    EXPECT_EQ(placesOf(letter), (Places{{100, 100}, {900, 100}, {1100, 420}, {100, 560}, {100, 700}}));
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
