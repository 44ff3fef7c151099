#include "Scraps.h"

#include <gtest/gtest.h>

using mirvak::ReadPage;
using mirvak::ReadWord;

namespace {

constexpr int markHeight = 24;

ReadWord word(const char* text, int left, int width, int height, float confidence = 92)
{
    ReadWord made;
    made.text = text;
    made.box = {left, 40 - height, left + width, 40};
    made.confidence = confidence;
    return made;
}

// What is left of a page with one line, words with a bar between them.
std::string leftOf(std::vector<ReadWord> words)
{
    ReadPage page;
    page.blocks = {{{std::move(words), {0, 0, 900, 44}}}};
    mirvak::dropScraps(page, markHeight);
    std::string left;
    for (const mirvak::ReadBlock& block : page.blocks) {
        for (const mirvak::ReadLine& line : block) {
            for (const ReadWord& kept : line.words)
                left += (left.empty() ? "" : "_") + kept.text;
        }
    }
    return left;
}

} // namespace

TEST(Scraps, DustThatStandsOffIsNoSign)
{
    const ReadWord mill = word("mill", 100, 90, 30), race = word("race", 300, 90, 30);
    EXPECT_EQ(leftOf({mill, word("|", 240, 4, 4), race}), "mill_race") << "a stroke as small as a dot";
    EXPECT_EQ(leftOf({mill, race, word("\u00b0", 600, 5, 5)}), "mill_race") << "at the end of a line";
    EXPECT_EQ(leftOf({word(",", 20, 3, 3), mill}), "mill") << "at its beginning";
    EXPECT_EQ(leftOf({mill, word("\u2014", 240, 40, 4), race}), "mill_\u2014_race");
    EXPECT_EQ(leftOf({mill, word("|", 240, 4, 34), race}), "mill_|_race") << "as tall as a letter";
    EXPECT_EQ(leftOf({mill, word(".", 195, 4, 4), race}), "mill_._race") << "stands at its word";
    EXPECT_EQ(leftOf({mill, word(".", 290, 4, 4), race}), "mill_._race");
    EXPECT_EQ(leftOf({mill, word("\u00b7", 240, 4, 4), race}), "mill_\u00b7_race");
    EXPECT_EQ(leftOf({mill, word("7", 240, 5, 5), race}), "mill_7_race") << "a digit";
}

TEST(Scraps, WhatTheRecogniserWasNotSureOfGoes)
{
    const ReadWord mill = word("mill", 100, 90, 30);
    EXPECT_EQ(leftOf({mill, word("==", 240, 40, 20, 59)}), "mill");
    EXPECT_EQ(leftOf({mill, word("==", 240, 40, 20, 61)}), "mill_==");
    EXPECT_EQ(leftOf({mill, word("--", 240, 40, 4, 9), mill}), "mill_--_mill") << "as wide as a dash";
    EXPECT_EQ(leftOf({mill, word("\u2014", 240, 26, 40, 9), mill}), "mill_mill") << "read of white";
    EXPECT_EQ(leftOf({mill, word("-\u2014", 240, 40, 4, 41)}), "mill_\u2014") << "one dash, worn, at the end";
    EXPECT_EQ(leftOf({mill, word("\u2014", 240, 20, 4, 41)}), "mill") << "shorter than any dash";
    EXPECT_EQ(leftOf({mill, word("-", 240, 20, 4, 9), mill, word("-", 440, 40, 4, 9)}), "mill_mill");
    EXPECT_EQ(leftOf({mill, word("rnill", 240, 90, 30, 5)}), "mill_rnill") << "one weak word of a good line";
    EXPECT_EQ(leftOf({word("xqj", 240, 90, 30, 34)}), "");
    EXPECT_EQ(leftOf({word("xqj", 240, 90, 30, 36)}), "xqj");
    EXPECT_EQ(leftOf({word("HA", 240, 50, 30, 74)}), "") << "a few letters by themselves";
    EXPECT_EQ(leftOf({word("HA", 240, 50, 30, 76)}), "HA");
    EXPECT_EQ(leftOf({word("==", 240, 40, 20), word("--", 300, 40, 20)}), "") << "no letter in the line";
}
