#include "TestMarks.h"

#include <gtest/gtest.h>
#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>

using namespace testMarks;
using mirvak::Marks;

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
    const std::vector<cv::Rect> signs{{450, 430, 3, 3},
                                      {450, 439, 3, 3},
                                      {520, 450, 8, 2},
                                      {597, 452, 3, 3},
                                      {610, 98, 2, 8},
                                      {626, 98, 2, 8}};
    for (const cv::Rect& sign : signs) // a colon and a dash by themselves, that dot, a quotation mark
        cv::rectangle(page, sign, 20, cv::FILLED);
    const int stop = 120 + 39 * step; // behind the last letter of a line
    cv::rectangle(page, {stop + step, 72, 4, 4}, 20, cv::FILLED);
    const cv::Rect above(stop + step + 19, 61, 4, 4); // dust, as near as a second stroke would be
    cv::rectangle(page, above, 40, cv::FILLED);
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
    EXPECT_EQ(inkIn(page, above), 0U);
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
