// Whether letters whose two sizes look alike are small, told by the marks of their line.
#include "SmallLetters.h"

#include "Boxes.h"

#include <gtest/gtest.h>

#include <string>

namespace {

constexpr int small = 18, capital = 25, baseline = 60;

/// A word as it was read, and its letters' heights in px.
struct Print
{
    std::string text;
    std::vector<int> heights;
};

const Print rest{"осенью", {small, small, small, small, small, small}};

/// What stands in the line afterwards.
std::string after(const std::vector<Print>& line, const Print& behind = rest)
{
    mirvak::Marks marks;
    marks.height = small;
    mirvak::ReadLine read;
    int x = 20;
    const auto put = [&](const Print& word) {
        cv::Rect box;
        for (const int height : word.heights) {
            const cv::Rect letter(x, baseline - height, 14, height);
            marks.boxes.push_back(letter);
            box |= letter;
            x += 18;
        }
        x += 12;
        read.words.push_back({word.text, mirvak::boxOf(box), 90});
    };
    for (const Print& word : line)
        put(word);
    put(behind);
    read.box = mirvak::boxAround(read.words);
    mirvak::ReadPage page;
    page.blocks = {{read}};
    mirvak::makeSmall(page, marks);
    std::string text;
    for (const mirvak::ReadWord& word : page.blocks.front().front().words)
        text += (text.empty() ? "" : " ") + word.text;
    return text;
}

} // namespace

TEST(SmallLetters, CapitalsNoHigherThanTheirLineAreSmall)
{
    EXPECT_EQ(after({{"И", {small}}, {"КЛЮЧ", {small, small, small, small}}}), "и ключ осенью");
    EXPECT_EQ(after({{"ДЛЯ", {small + 4, small, small}}}), "для осенью") << "a stroke below the line";
    EXPECT_EQ(after({{"Самого", {small, small, small, small, small, small}}}), "самого осенью");
    EXPECT_EQ(after({{"И", {capital}}, {"КЛЮЧ", {capital, capital, capital, capital}}}), "И КЛЮЧ осенью");
    EXPECT_EQ(after({{"Самого", {capital, small, small, small, small, small}}}), "Самого осенью");
    EXPECT_EQ(after({{"США", {small, small, small}}}), "США осенью") << "a small letter has another shape";
    EXPECT_EQ(after({{"ГОСТ12", {small, small, small, small, capital, capital}}}), "ГОСТ12 осенью");
    EXPECT_EQ(after({{"КамАЗ", {small, small, small, small, small}}}), "КамАЗ осенью");
    EXPECT_EQ(after({{"И", {small}}}, {"дом", {small, small, small}}), "И дом") << "too few to measure by";
}

TEST(SmallLetters, OneWordMayBePrintedSmallerThanItsLine)
{
    // The label of a form and what was entered: its own letters tell more than those of its neighbours.
    const Print label{"Мастер", {18, 13, 13, 13, 13, 13, 13}};
    EXPECT_EQ(after({label}), "Мастер осенью");
    // Strokes that stick out make no small letter higher.
    EXPECT_EQ(after({{"В", {capital}}}, {"форзацы", {33, 18, 26, 18, 18, 23, 23}}), "В форзацы");
}

TEST(SmallLetters, WornLettersLieInPieces)
{
    mirvak::Marks marks;
    marks.height = small;
    mirvak::ReadPage page;
    mirvak::ReadLine line;
    // A capital in two pieces above each other, each no higher than a small letter.
    marks.boxes = {{20, 35, 14, 12}, {20, 47, 14, 13}};
    line.words.push_back({"В", {20, 35, 34, 60}, 90});
    for (int i = 0; i < 8; ++i)
        marks.boxes.emplace_back(60 + 18 * i, baseline - small, 14, small);
    line.words.push_back({"полночью", {60, 42, 200, 60}, 90});
    // Beside each other: the left foot of a letter, and what is left of it; no trace of the first letter.
    for (const int x : {240, 400})
        for (int i = 0; i < 6; ++i)
            marks.boxes.emplace_back(x + 18 * (i + 1), baseline - small, 14, small);
    marks.boxes.emplace_back(240, baseline - small, 5, small);
    marks.boxes.emplace_back(244, baseline - capital, 10, capital);
    line.words.push_back({"Ладыгин", {240, 35, 362, 60}, 90});
    line.words.push_back({"Самого", {394, 35, 522, 60}, 90});
    line.box = {20, 35, 522, 60};
    page.blocks = {{line}};
    mirvak::makeSmall(page, marks);
    std::string text;
    for (const mirvak::ReadWord& word : page.blocks.front().front().words)
        text += word.text + ' ';
    EXPECT_EQ(text, "В полночью Ладыгин Самого ");
}
