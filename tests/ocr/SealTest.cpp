#include "Seals.h"

#include <gtest/gtest.h>
#include <opencv2/imgproc.hpp>

namespace {

const cv::Scalar red(206, 32, 38), blue(38, 66, 176);
const cv::Rect date(470, 590, 260, 20); // black print

cv::Mat page()
{
    cv::Mat rgb(1400, 1000, CV_8UC3, cv::Scalar::all(255));
    cv::rectangle(rgb, date, cv::Scalar::all(30), cv::FILLED);
    return rgb;
}

// Ink over print darkens it.
void press(cv::Mat& rgb, const cv::Mat& ink)
{
    cv::multiply(rgb, ink, rgb, 1.0 / 255);
}

cv::Mat ring(const cv::Scalar& colour)
{
    cv::Mat ink(1400, 1000, CV_8UC3, cv::Scalar::all(255));
    cv::circle(ink, {560, 600}, 110, colour, 8);
    cv::circle(ink, {560, 600}, 30, colour, cv::FILLED);
    for (int i = 0; i < 12; ++i) // its letters
        cv::rectangle(ink, {480 + 14 * i, 520 + (i % 3) * 4, 8, 16}, colour, cv::FILLED);
    return ink;
}

int darkIn(const cv::Mat& rgb, const cv::Rect& part)
{
    cv::Mat grey;
    cv::cvtColor(rgb(part), grey, cv::COLOR_RGB2GRAY);
    return cv::countNonZero(grey < 190);
}

} // namespace

TEST(Seals, LeaveThePrintBelowThem)
{
    for (const cv::Scalar& colour : {red, blue}) {
        cv::Mat rgb = page();
        press(rgb, ring(colour));
        ASSERT_GT(darkIn(rgb, {400, 480, 320, 100}), 1000);
        EXPECT_TRUE(mirvak::takeOutSeals(rgb));
        EXPECT_EQ(darkIn(rgb, {400, 480, 320, 100}), 0) << "letters of the seal";
        EXPECT_EQ(darkIn(rgb, date), date.area());
        EXPECT_EQ(darkIn(rgb, {400, 615, 320, 150}), 0);
    }
}

TEST(Seals, ASquareOneIsAFrame)
{
    cv::Mat rgb = page(), ink(rgb.size(), CV_8UC3, cv::Scalar::all(255));
    cv::rectangle(ink, {500, 540, 120, 120}, red, 6);
    cv::rectangle(ink, {530, 560, 20, 80}, red, cv::FILLED);
    press(rgb, ink);
    EXPECT_TRUE(mirvak::takeOutSeals(rgb));
    EXPECT_EQ(darkIn(rgb, {490, 530, 140, 55}), 0);
    EXPECT_EQ(darkIn(rgb, date), date.area());
}

TEST(Seals, ColouredPrintIsNone)
{
    cv::Mat rgb = page();
    for (int row = 0; row < 9; ++row) { // a paragraph as high as wide, and a title
        for (int i = 0; i < 14; ++i)
            cv::rectangle(rgb, {100 + 20 * i, 800 + 30 * row, 14, 16}, red, cv::FILLED);
    }
    for (int i = 0; i < 7; ++i)
        cv::rectangle(rgb, {150 + 100 * i, 100, 80, 80}, red, 14);
    const cv::Mat before = rgb.clone();
    EXPECT_FALSE(mirvak::takeOutSeals(rgb));
    EXPECT_EQ(cv::norm(before, rgb, cv::NORM_INF), 0);
    cv::Mat tiny(1, 1, CV_8UC3, red);
    EXPECT_FALSE(mirvak::takeOutSeals(tiny));
}
