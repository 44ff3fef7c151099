// What becomes of the lines that were read of a page as a whole, on boxes alone.
#include "AreaReader.h"
#include "Boxes.h"
#include "PartedWords.h"
#include "Strips.h"
#include "TornAreas.h"

#include <gtest/gtest.h>

using mirvak::Marks;
using mirvak::ReadBlock;
using mirvak::ReadLine;
using mirvak::ReadWord;
using mirvak::Strip;
using mirvak::TextArea;

namespace {

constexpr int height = 20, pitch = 40, space = 12;

ReadWord word(const std::string& text, int left, int top, int width = 80)
{
    ReadWord made;
    made.text = text;
    made.box = {left, top, left + width, top + height};
    made.confidence = 95;
    return made;
}

ReadLine line(std::vector<ReadWord> words)
{
    ReadLine made{std::move(words), {}};
    made.box = mirvak::boxAround(made.words);
    return made;
}

/// Words from left to right, as wide as 80 px and a space; `wide` stands before one of them.
ReadLine row(int top, const std::vector<std::string>& texts, size_t wideAt = 99, int wide = 0)
{
    std::vector<ReadWord> words;
    int left = 100;
    for (size_t i = 0; i < texts.size(); ++i) {
        left += i == wideAt ? wide - space : 0;
        words.push_back(word(texts[i], left, top));
        left += 80 + space;
    }
    return line(words);
}

/// Lines with a bar behind each.
std::string textOf(const ReadBlock& block)
{
    std::string text;
    for (const ReadLine& read : block) {
        for (size_t i = 0; i < read.words.size(); ++i)
            text += (i > 0 ? " " : "") + read.words[i].text;
        text += '|';
    }
    return text;
}

Marks lettersOf(const ReadBlock& lines)
{
    Marks marks;
    marks.height = height;
    for (const ReadLine& read : lines) {
        for (const ReadWord& each : read.words) {
            for (int x = each.box.left; x < each.box.right; x += 16)
                marks.boxes.emplace_back(x, each.box.top, 13, height);
        }
    }
    return marks;
}

} // namespace

TEST(WholePage, WordsOfALineGoToTheAreasInWhichTheyStand)
{
    const std::vector<TextArea> areas{{{90, 90, 200, 200}, {}, false}, {{400, 90, 300, 200}, {}, false}};
    const ReadBlock lines{line({word("left", 100, 100), word("right", 410, 100), word("end", 520, 100)}),
                          line({word("below", 410, 140)}),
                          line({word("torn", 240, 180), word("nowhere", 800, 180)}),
                          line({word("lower", 100, 140)})};
    const std::vector<ReadBlock> blocks = mirvak::partWords(lines, areas, height);
    ASSERT_EQ(blocks.size(), 2U);
    EXPECT_EQ(textOf(blocks[0]), "left|lower|");
    EXPECT_EQ(textOf(blocks[1]), "right end|below|");
    EXPECT_EQ(blocks[1][0].box.left, 410);
    EXPECT_EQ(blocks[1][0].box.right, 600);
    // Of two areas that lie over it, a word belongs to the one whose letters it has.
    const std::vector<TextArea> over{{{90, 90, 700, 200}, {{410, 100, 80, height}}, false}, areas[1]};
    EXPECT_EQ(textOf(mirvak::partWords({line({word("right", 410, 100)})}, over, height)[1]), "right|");
}

TEST(WholePage, WordsAreAsLargeAsTheirMarksAndDashesAsTheyWereRead)
{
    Marks marks;
    marks.height = height;
    marks.boxes = {{100, 100, 13, height}, {116, 104, 13, 16}, {202, 109, 7, 2}};
    const auto sized = [&](const mirvak::Box& box) {
        return mirvak::rectOf(mirvak::withoutRules(box, marks));
    };
    EXPECT_EQ(sized({90, 95, 140, 150}), cv::Rect(100, 100, 29, 20)) << "reaches to a rule";
    EXPECT_EQ(sized({200, 108, 226, 111}), cv::Rect(200, 108, 26, 3)) << "a faded dash";
    EXPECT_EQ(sized({300, 95, 340, 120}), cv::Rect(300, 95, 40, 25)) << "nothing is known of it";
}

TEST(WholePage, WhatStandsOnOneLevelIsOneLineFromTheTop)
{
    const std::vector<TextArea> page{{{0, 0, 1000, 1000}, {}, false}};
    ReadWord frame = word("[", 400, 140);
    frame.box.bottom = 330;                                // reaches down over the lines below
    const ReadBlock lines{line({word("12.50", 700, 104)}), // what leans
                          line({word("price", 500, 182), word("7.90", 700, 186)}),
                          line({word("jug", 100, 100), word("price", 500, 102)}),
                          line({word("paper", 100, 142), word("of", 200, 142), frame}),
                          line({word("thread", 100, 180)})};
    EXPECT_EQ(textOf(mirvak::partWords(lines, page, height)[0]),
              "jug price 12.50|paper of [|thread price 7.90|");
    // Words between others: the recogniser takes wide spaces of a line for the edge of a column.
    const ReadBlock wide{line({word("large", 100, 100), word("dial", 300, 100), word("black", 500, 100)}),
                         line({word("white", 200, 102), word("and", 400, 102)})};
    EXPECT_EQ(textOf(mirvak::partWords(wide, page, height)[0]), "large white dial and black|");
    // A line below another one is none of it, nor is one over it that begins further right.
    EXPECT_EQ(textOf(mirvak::partWords(
                  {line({word("b", 300, 115)}), line({word("a", 100, 100)})}, page, height)[0]),
              "a|b|");
}

TEST(WholePage, AreasThatTearLinesAreJoined)
{
    const TextArea upper{{90, 20, 800, 40}, {}, false}, left{{90, 90, 185, 130}, {{300, 95, 9, 9}}, false},
        right{{280, 90, 500, 130}, {{200, 95, 9, 9}, {700, 400, 9, 9}}, false};
    const auto joined = [&](const ReadBlock& lines) {
        std::vector<TextArea> areas{upper, left, right};
        mirvak::joinTornAreas(areas, lines);
        return areas;
    };
    const std::vector<std::string> texts{"so", "they", "dug", "away", "silt"};
    const std::vector<TextArea> areas = joined({row(100, texts), row(140, texts, 2, 15), row(180, texts)});
    ASSERT_EQ(areas.size(), 2U);
    EXPECT_EQ(areas[1].box, cv::Rect(90, 90, 690, 130));
    EXPECT_EQ(areas[1].foreign, std::vector<cv::Rect>{cv::Rect(700, 400, 9, 9)}) << "the rest is its own now";
    std::vector<TextArea> columns{left, right, {{600, 20, 180, 500}, {}, false}};
    mirvak::joinTornAreas(columns, {row(100, texts), row(140, texts, 2, 15), row(180, texts)});
    EXPECT_EQ(columns.size(), 3U) << "together they would reach into a third";
    columns.back().box = {300, 180, 200, 40};
    mirvak::joinTornAreas(columns, {row(100, texts), row(140, texts, 2, 15), row(180, texts)});
    EXPECT_LT(columns.size(), 3U) << "which is torn off as they are";
    EXPECT_EQ(joined({row(100, texts, 2, 40), row(140, texts, 2, 40), row(180, texts)}).size(), 3U)
        << "a gutter";
    ReadBlock across{row(100, texts, 2, 40), row(140, texts, 2, 40), row(180, texts, 2, 40)};
    for (ReadLine& whole : across)
        whole.words.push_back(word("far", 820, whole.box.top));
    EXPECT_EQ(joined(across).size(), 3U) << "the white before a third column is no space of these two";
    EXPECT_EQ(joined({row(100, texts), row(140, {"so", "they"}), row(180, {"so", "they"})}).size(), 3U)
        << "one line of three";
    EXPECT_EQ(joined({row(100, {"so", "they", "dug"}), row(140, {"so", "they", "dug"})}).size(), 3U)
        << "with one other space nothing is usual";
}

TEST(WholePage, StripsWithPrintThatWasLeftOutAreFound)
{
    const ReadBlock all{row(100, {"alpha", "betas", "gamma"}),
                        row(140, {"delta", "theta", "kappa"}),
                        row(180, {"first", "other", "third"}),
                        row(220, {"after", "whole", "still"}),
                        row(260, {"never", "close", "again"})};
    const TextArea area{{90, 90, 400, 200}, {}, false};
    Marks marks = lettersOf(all);
    EXPECT_TRUE(mirvak::leftOut(area, all, marks).empty());
    ReadBlock lines = all;
    lines[1].words.pop_back();
    lines.erase(lines.begin() + 3);
    lines[0].words[0].box.left += 14;               // boxes may begin too late by a letter
    marks.boxes.emplace_back(300, 120, 6, 6);       // a speck
    marks.boxes.emplace_back(600, 120, 13, height); // beyond
    const std::vector<Strip> strips = mirvak::leftOut(area, lines, marks);
    ASSERT_EQ(strips.size(), 2U);
    EXPECT_EQ(strips[0].box, cv::Rect(90, 140, 400, height));
    EXPECT_EQ(strips[0].lines, std::vector<size_t>{1});
    EXPECT_EQ(strips[1].box, cv::Rect(90, 220, 400, height));
    EXPECT_TRUE(strips[1].lines.empty());
    const std::vector<Strip> lost = mirvak::lostLines(area, lines, marks);
    ASSERT_EQ(lost.size(), 1U);
    EXPECT_EQ(lost[0].box, strips[1].box);
    lines[0].words[1].text = "be";
    lines[0].words[1].box.right = 464; // as wide as what was lost
    lines[0].words.pop_back();
    EXPECT_EQ(mirvak::leftOut(area, lines, marks)[0].lines, (std::vector<size_t>{0, 1})) << "one strip";
    const TextArea others{area.box, marks.boxes, false};
    EXPECT_TRUE(mirvak::leftOut(others, {}, marks).empty()) << "letters of another area";
    // Of most of an area one strip is made.
    const std::vector<Strip> whole = mirvak::leftOut({{90, 90, 400, 150}, {}, false}, {lines[0]}, marks);
    ASSERT_EQ(whole.size(), 1U);
    EXPECT_EQ(whole[0].box.height, 150);
    EXPECT_EQ(whole[0].lines, std::vector<size_t>{0});
}
