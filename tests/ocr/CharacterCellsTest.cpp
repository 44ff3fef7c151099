#include "CharacterCells.h"
#include "TestGlyphs.h"
#include "Unicode.h"

using namespace mirvak;
using namespace testGlyphs;

namespace {

std::vector<RoughCharacter> roughly(const Print& print, const std::u32string& text)
{
    std::vector<RoughCharacter> rough;
    for (size_t i = 0; i < print.inks.size(); ++i) {
        // Half a character wrong, now to the left and now to the right.
        const double off = pitch * 0.5 * ((i * 7) % 5 - 2.0) / 2;
        rough.push_back({print.inks[i].x + print.inks[i].width / 2.0 + off,
                         isIdeographic(text[i]) && text[i] != U'。',
                         false});
    }
    return rough;
}

// Most of a glyph's width lies in its own cell.
bool holds(const cv::Rect& cell, const cv::Rect& ink)
{
    const int from = std::max(cell.x, ink.x), to = std::min(cell.br().x, ink.br().x);
    return to - from >= ink.width - 3;
}

} // namespace

TEST(CharacterCells, HoldTheirCharactersWhateverTheRecogniserSays)
{
    const std::u32string text = textOf({3, 1, 4, 12, 5, -1, 9, 2, 6, 15, 35, -1, 8, 9, 7, 33, 21, 30});
    const Print print(text);
    const std::vector<cv::Rect> cells = characterCells(print.picture, roughly(print, text));
    ASSERT_EQ(cells.size(), text.size());
    for (size_t i = 0; i < cells.size(); ++i) {
        EXPECT_TRUE(text[i] == U'。' || holds(cells[i], print.inks[i])) << i << cells[i] << print.inks[i];
        EXPECT_EQ(cells[i].height, print.picture.rows);
        EXPECT_TRUE(i == 0 || cells[i].x >= cells[i - 1].br().x);
    }
}

TEST(CharacterCells, OneTooManyMovesNoOtherAndOneTooFewOnlyItsNeighbours)
{
    const std::u32string text = textOf({3, 1, 4, 12, 5, 10, 9, 2, 6, 15, 35, 11, 8});
    const Print print(text);
    std::vector<RoughCharacter> rough = roughly(print, text);
    const RoughCharacter sixth = rough[5];
    rough.insert(rough.begin() + 6, {sixth.middle + 10, true, true});
    std::vector<cv::Rect> cells = characterCells(print.picture, rough);
    ASSERT_EQ(cells.size(), text.size() + 1);
    EXPECT_EQ((cells[5].width == 0) + (cells[6].width == 0), 1) << "there is one place for the two";
    for (size_t i = 0; i < text.size(); ++i)
        EXPECT_TRUE(i == 5 || holds(cells[i < 5 ? i : i + 1], print.inks[i])) << i;

    rough = roughly(print, text);
    rough.erase(rough.begin() + 5);
    cells = characterCells(print.picture, rough);
    ASSERT_EQ(cells.size(), text.size() - 1);
    for (size_t i = 0; i < text.size(); ++i)
        EXPECT_TRUE((i >= 4 && i <= 6) || holds(cells[i < 5 ? i : i - 1], print.inks[i]))
            << i << cells[i < 5 ? i : i - 1] << print.inks[i];
}

TEST(CharacterCells, NoPitchNoCells)
{
    const Print print(textOf({1, 2, 3}));
    EXPECT_TRUE(characterCells(print.picture, {}).empty());
    EXPECT_TRUE(characterCells({}, {{1, true, false}, {2, true, false}, {3, true, false}}).empty());
    EXPECT_TRUE(
        characterCells(print.picture,
                       {{80, true, false}, {120, false, false}, {160, true, false}, {170, false, false}})
            .empty());
    for (const cv::Size size : {cv::Size(1, 1), cv::Size(2000, 1), cv::Size(1, 500), cv::Size(300, 40)}) {
        for (const int level : {0, 255}) {
            const cv::Mat line(size, CV_8UC1, cv::Scalar(level));
            const auto cells = characterCells(line,
                                              {{-500, true, false},
                                               {-460, true, false},
                                               {20, true, false},
                                               {60, true, false},
                                               {5000, true, false},
                                               {5040, true, false}});
            for (const cv::Rect& cell : cells)
                EXPECT_TRUE(cell.x >= 0 && cell.br().x <= size.width && cell.width >= 0) << size << cell;
        }
    }
}
