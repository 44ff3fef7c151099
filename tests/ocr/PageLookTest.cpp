// What the marks of a page tell before anything is read.
#include "Bearing.h"
#include "Rows.h"
#include "ScriptLook.h"
#include "TestMarks.h"

#include <gtest/gtest.h>

using namespace testMarks;
using mirvak::Marks;

TEST(PageLook, HeightsTellTheScript)
{
    Marks latin, cyrillic, ideographs, capitals, table, receipt;
    for (int i = 0; i < 400; ++i) {
        latin.boxes.emplace_back(i * step, 100, 9, i % 5 < 2 ? 22 : 16);
        cyrillic.boxes.emplace_back(i * step, 100, 9, i % 7 < 1 ? 22 : 16);
        ideographs.boxes.emplace_back(i * step, 100, 9, 12 + 7 * i % 20);
        capitals.boxes.emplace_back(i * step, 100, 9, 16);
        table.boxes.emplace_back(i * step, 100, 9, i % 9 < 2 ? 22 : 16);     // Cyrillic, with numbers
        receipt.boxes.emplace_back(i * step, 100, 9, i % 20 < 11 ? 22 : 16); // Latin, with more of them
    }
    for (Marks* marks : {&latin, &cyrillic, &ideographs, &capitals, &table, &receipt})
        marks->height = height;
    using mirvak::ScriptLook;
    EXPECT_EQ(mirvak::scriptLookOf(latin), ScriptLook::latin);
    EXPECT_EQ(mirvak::scriptLookOf(cyrillic), ScriptLook::cyrillic);
    EXPECT_EQ(mirvak::scriptLookOf(ideographs), ScriptLook::ideographs);
    EXPECT_EQ(mirvak::scriptLookOf(table), ScriptLook::cyrillic);
    EXPECT_EQ(mirvak::scriptLookOf(receipt), ScriptLook::latin);
    EXPECT_EQ(mirvak::scriptLookOf(capitals), ScriptLook::latin) << "no guess";
    EXPECT_EQ(mirvak::scriptLookOf({}), ScriptLook::latin);
}

TEST(PageLook, RowsRunThereWhereLettersAreNear)
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

TEST(PageLook, SamplesAreCutBetweenWords)
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

TEST(PageLook, SamplesFollowLinesThatBend)
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
