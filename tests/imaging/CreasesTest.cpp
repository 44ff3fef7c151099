// What the folds of a letter become in black and white, and what only looks like them.
#include "MadePages.h"
#include "Threshold.h"

#include <opencv2/imgproc.hpp>

#include <gtest/gtest.h>

namespace {

const cv::Size size(1240, 1754);

/// A line three pixels wide, by which the paper is darkened.
struct Line
{
    cv::Point from, to;
    double factor = 0.8;
};

cv::Mat blackAndWhite(cv::Mat sheet, const std::vector<Line>& lines)
{
    for (const Line& line : lines) {
        cv::Mat shade(sheet.size(), CV_32FC3, cv::Scalar::all(1));
        cv::line(shade, line.from, line.to, cv::Scalar::all(line.factor), 3);
        cv::Mat shaded;
        sheet.convertTo(shaded, CV_32FC3);
        cv::Mat(shaded.mul(shade)).convertTo(sheet, CV_8UC3);
    }
    made::shine(sheet, {0.75, 1, 2});
    mirvak::Image image;
    image.pixels = sheet;
    mirvak::threshold(image);
    cv::Mat black;
    cv::inRange(image.pixels, cv::Scalar::all(0), cv::Scalar::all(100), black);
    return black;
}

/// Share of the steps along a line at which there is black within two pixels.
double drawn(const cv::Mat& black, const Line& line)
{
    cv::LineIterator at(black, line.from, line.to);
    int seen = 0;
    for (int i = 0; i < at.count; ++i, ++at) {
        const cv::Rect near = cv::Rect(at.pos().x - 2, at.pos().y - 2, 5, 5) & cv::Rect({}, black.size());
        seen += cv::countNonZero(black(near)) > 0 ? 1 : 0;
    }
    return static_cast<double>(seen) / at.count;
}

Line across(int left, int right, double factor = 0.8)
{
    return {{0, left}, {size.width - 1, right}, factor};
}

Line down(int top, int bottom)
{
    return {{top, 0}, {bottom, size.height - 1}};
}

} // namespace

TEST(Creases, goWhateverTheirSlantAndWhatCrossesThemStays)
{
    const cv::Mat text = made::textPage(size, 34), wanted = blackAndWhite(text.clone(), {});
    const std::vector<Line> folds{across(590, 570), across(1150, 1180), down(600, 612)};
    const cv::Mat black = blackAndWhite(text.clone(), folds);
    cv::Mat around, other;
    cv::dilate(wanted, around, cv::Mat::ones(5, 5, CV_8UC1));
    EXPECT_LE(cv::countNonZero(black & ~around), 60) << "of 12,000 pixels of creases";
    cv::dilate(black, other, cv::Mat::ones(3, 3, CV_8UC1));
    EXPECT_LE(cv::countNonZero(wanted & ~other), 0.002 * cv::countNonZero(wanted));
}

TEST(Creases, areNotWhatSomebodyHasDrawnOrRuled)
{
    const auto stays = [](const std::vector<Line>& lines, const char* what) {
        const cv::Mat black = blackAndWhite(made::blankPage(size), lines);
        for (const Line& line : lines)
            EXPECT_GE(drawn(black, line), 0.97) << what << " at " << line.from;
    };
    stays({across(600, 600, 0.3)}, "a dark line");
    stays({{{100, 600}, {1140, 610}}}, "a line that ends before the edges");
    stays({across(600, 700)}, "a steep line");
    std::vector<Line> ruled;
    for (int y = 300; y < 1500; y += 120)
        ruled.push_back(across(y, y + 4));
    stays(ruled, "a ruled page");
    const cv::Mat folded = blackAndWhite(made::blankPage(size), {across(600, 604), across(1200, 1190)});
    EXPECT_EQ(cv::countNonZero(folded), 0);
}
