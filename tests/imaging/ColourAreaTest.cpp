// What lies on the paper beside print: coloured areas, photographs, seals of any ink, other light.
#include "Background.h"
#include "Enhance.h"
#include "MadePages.h"
#include "PaperModel.h"
#include "Seal.h"
#include "Sharpen.h"
#include "Specks.h"
#include "Threshold.h"

#include <gtest/gtest.h>

#include <opencv2/imgproc.hpp>

#include <functional>
#include <string>

namespace {

const cv::Size size(1000, 1414);
using Process = void (*)(mirvak::Image&);

mirvak::Image lit(const cv::Mat& sheet, const made::Light& light = {0.7, 1, 2})
{
    mirvak::Image image;
    image.pixels = sheet.clone();
    made::shine(image.pixels, light);
    return image;
}

cv::Rect inside(const cv::Rect& box, int rim = 8)
{
    return {box.x + rim, box.y + rim, box.width - 2 * rim, box.height - 2 * rim};
}

/// Of what white paper would be.
cv::Scalar onWhite(const cv::Scalar& colour)
{
    const cv::Mat paper = made::blankPage({1, 1});
    const auto white = paper.at<cv::Vec3b>(0, 0);
    return {colour[0] * 255 / white[0], colour[1] * 255 / white[1], colour[2] * 255 / white[2]};
}

cv::Mat grey(const cv::Mat& rgb)
{
    cv::Mat result;
    cv::cvtColor(rgb, result, cv::COLOR_RGB2GRAY);
    return result;
}

double shareOf(const cv::Mat& condition)
{
    return static_cast<double>(cv::countNonZero(condition)) / static_cast<double>(condition.total());
}

void write(cv::Mat& sheet, const std::string& text, cv::Point at)
{
    cv::putText(sheet, text, at, cv::FONT_HERSHEY_COMPLEX, 0.8, cv::Scalar::all(40), 2, cv::LINE_AA);
}

} // namespace

TEST(ColourAreas, paleBoxesAndPhotographsKeepTheirColours)
{
    cv::Mat sheet = made::textPage(size, 34);
    sheet(cv::Rect(0, 500, size.width, 914)).setTo(cv::mean(made::blankPage({1, 1})));
    const std::pair<cv::Rect, cv::Scalar> boxes[] = {{{100, 540, 200, 120}, {239, 228, 190}},
                                                     {{400, 540, 200, 120}, {214, 226, 232}},
                                                     {{700, 540, 200, 120}, {220, 222, 216}}};
    for (const auto& [box, colour] : boxes)
        sheet(box).setTo(colour);
    const cv::Rect photo(150, 800, 600, 400); // from deep blue to nearly paper
    for (int y = 0; y < photo.height; ++y) {
        for (int x = 0; x < photo.width; ++x)
            sheet.at<cv::Vec3b>(photo.y + y, photo.x + x) =
                cv::Vec3b(static_cast<uchar>(60 + x / 4), static_cast<uchar>(70 + x / 5 + y / 8), 215);
    }
    for (const Process process : {mirvak::removeBackground, mirvak::processDocument, mirvak::enhanceColour}) {
        mirvak::Image page = lit(sheet);
        process(page);
        EXPECT_GT(shareOf(grey(page.pixels)(cv::Rect(20, 20, 900, 60)) >= 250), 0.999);
        EXPECT_GT(shareOf(grey(page.pixels)(cv::Rect(320, 540, 60, 120)) >= 250), 0.99) << "between boxes";
        // Enhanced ones are livelier by intention.
        const bool isLively = process == static_cast<Process>(mirvak::enhanceColour);
        for (const auto& [box, colour] : boxes) {
            const cv::Scalar seen = cv::mean(page.pixels(inside(box))), wanted = onWhite(colour);
            for (int c = 0; c < 3; ++c)
                EXPECT_NEAR(seen[c], wanted[c], isLively ? 10 : 5) << box;
        }
        for (const cv::Point corner : {photo.tl(), photo.br() - cv::Point(60, 60)}) {
            const cv::Rect part = inside({corner, cv::Size(60, 60)});
            const cv::Scalar seen = cv::mean(page.pixels(part)), wanted = onWhite(cv::mean(sheet(part)));
            EXPECT_LT(cv::norm(seen - wanted), isLively ? 40 : 24) << corner;
        }
    }
}

TEST(ColourAreas, paperIsWhiteUnderLightWithHardEdges)
{
    // A bar parts the page, and its lower half is darker; an arm's hard shadow lies over the right side.
    cv::Mat sheet = made::blankPage(size);
    sheet(cv::Rect(0, 800, size.width, 614)) *= 0.85;
    sheet(cv::Rect(820, 0, 180, 700)) *= 0.6;
    sheet(cv::Rect(0, 770, size.width, 30)).setTo(cv::Scalar(40, 60, 150));
    const cv::Rect box(200, 300, 160, 120);
    sheet(box) *= 0.85;
    mirvak::Image page = lit(sheet);
    mirvak::removeBackground(page);
    const cv::Mat level = grey(page.pixels);
    EXPECT_GT(shareOf(level(cv::Rect(20, 20, 700, 200)) >= 250), 0.999);
    EXPECT_GT(shareOf(level(cv::Rect(20, 850, 900, 500)) >= 250), 0.999) << "the lower half";
    EXPECT_GT(shareOf(level(cv::Rect(850, 20, 140, 640)) >= 250), 0.999) << "in the shadow";
    EXPECT_NEAR(cv::mean(level(inside(box)))[0], 0.85 * 255, 6) << "as dark, but small: a box";
    const cv::Mat share = mirvak::PaperModel(lit(sheet).pixels).share();
    const double scale = static_cast<double>(share.cols) / size.width;
    const auto at = [&](cv::Point p) { return share.at<float>(cv::Point2d(p) * scale); };
    EXPECT_EQ(at({280, 360}), 0);
    EXPECT_EQ(at({201, 360}), 0) << "the box up to its edge";
    EXPECT_EQ(at({192, 360}), 1) << "and paper up to there";
    EXPECT_EQ(at({500, 1100}), 1);
    EXPECT_EQ(at({900, 300}), 1);
}

TEST(ColourAreas, blackAndWhiteFillsOneColouredAreasAndKeepsPrintOnThem)
{
    cv::Mat sheet = made::blankPage(size);
    const cv::Rect orange(100, 100, 200, 120), yellow(400, 100, 200, 120), pale(700, 100, 200, 120),
        marked(100, 400, 500, 50), labelled(100, 600, 300, 120);
    sheet(orange).setTo(cv::Scalar(225, 135, 48));
    sheet(yellow).setTo(cv::Scalar(228, 190, 55));
    sheet(pale).setTo(cv::Scalar(239, 228, 190));
    sheet(marked).setTo(cv::Scalar(240, 232, 85));
    sheet(labelled).setTo(cv::Scalar(228, 190, 55));
    cv::Mat inked(size, CV_8UC1, cv::Scalar(255));
    for (const cv::Point at : {cv::Point(110, 435), {110, 660}, {720, 160}}) {
        write(sheet, "Receipt", at);
        cv::putText(inked, "Receipt", at, cv::FONT_HERSHEY_COMPLEX, 0.8, 0, 2);
    }
    mirvak::Image page = lit(sheet, {0.7, 1, 3});
    mirvak::threshold(page);
    const cv::Mat level = grey(page.pixels);
    for (const cv::Rect& solid : {orange, yellow}) {
        EXPECT_EQ(shareOf(level(inside(solid, 3)) == 0), 1) << solid;
        EXPECT_EQ(cv::countNonZero(level(inside(solid, -20)) == 0),
                  cv::countNonZero(level(inside(solid, -3)) == 0));
        EXPECT_NEAR(cv::countNonZero(level(inside(solid, -20)) == 0), solid.area(), 0.02 * solid.area());
    }
    cv::Mat clear;
    cv::erode(inked, clear, cv::Mat(), {-1, -1}, 4);
    for (const cv::Rect& printed : {marked, labelled, pale}) {
        EXPECT_GT(shareOf((level(printed) == 0) | (inked(printed) > 0)), 0.99) << "print " << printed;
        EXPECT_LT(shareOf((level(printed) == 0) & (clear(printed) > 0)), 0.002) << "ground " << printed;
    }
}

TEST(ColourAreas, blackAndWhitePartsPicturesByLevelAndNotByNoise)
{
    cv::Mat sheet = made::blankPage(size), inked(size, CV_8UC1, cv::Scalar(255));
    const cv::Rect picture(100, 100, 510, 200), tinted(100, 500, 500, 160);
    for (int x = 0; x < picture.width; ++x)
        sheet(cv::Rect(picture.x + x, picture.y, 1, picture.height)).setTo(cv::Scalar::all(20 + x / 3));
    sheet(tinted).setTo(cv::Scalar::all(146)); // nearly half of the light is missing
    write(sheet, "Receipt", {140, 590});
    cv::putText(inked, "Receipt", {140, 590}, cv::FONT_HERSHEY_COMPLEX, 0.8, 0, 2);
    cv::erode(inked, inked, cv::Mat(), {-1, -1}, 6);
    mirvak::Image page = lit(sheet, {1, 1, 4});
    mirvak::threshold(page);
    const cv::Mat level = grey(page.pixels);
    EXPECT_EQ(shareOf(level(cv::Rect(110, 110, 200, 180)) == 0), 1);
    EXPECT_EQ(shareOf(level(cv::Rect(540, 110, 50, 180)) == 255), 1);
    const cv::Rect ground = inside(tinted, 20);
    EXPECT_LT(shareOf((level(ground) == 0) & (inked(ground) > 0)), 0.02);
}

TEST(ColourAreas, noiseInDarkPrintIsNoSeal)
{
    mirvak::Image page = lit(made::textPage(size, 34), {0.5, 0.7, 4});
    mirvak::strengthenSeal(page, mirvak::SealColour::red);
    std::vector<cv::Mat> c;
    cv::split(page.pixels, c);
    const cv::Mat chroma = cv::max(cv::max(c[0], c[1]), c[2]) - cv::min(cv::min(c[0], c[1]), c[2]);
    EXPECT_LT(shareOf(chroma > 80), 1e-4);
}

TEST(ColourAreas, sealsOfTwoInksOnOnePageKeepTheirHues)
{
    cv::Mat sheet = made::blankPage(size);
    made::stamp(sheet, {300, 400}, 280, {200, 30, 40});
    made::stamp(sheet, {700, 900}, 280, {225, 120, 50});
    mirvak::Image page = lit(sheet);
    mirvak::strengthenSeal(page, mirvak::SealColour::red);
    const auto greenOf = [&](cv::Point centre) { // of the ink alone
        const cv::Rect box(centre - cv::Point(150, 150), cv::Size(300, 300));
        return cv::mean(page.pixels(box), grey(page.pixels)(box) < 190)[1];
    };
    EXPECT_GT(greenOf({700, 900}), greenOf({300, 400}) + 40);
}

TEST(ColourAreas, aWarmPageUnderMixedLightHasNoColourLeftButItsPanelHas)
{
    cv::Mat sheet = made::blankPage(size);
    const cv::Rect panel(250, 250, 500, 500);
    for (int y = 0; y < panel.height; ++y) { // begins softly, as at a fold
        const double tinted = std::min(1.0, y / 150.0);
        sheet.row(panel.y + y).colRange(panel.x, panel.x + panel.width) =
            cv::mean(made::blankPage({1, 1})) - tinted * cv::Scalar(40, 22, 4);
    }
    for (int y = 0; y < size.height; ++y) // from lamp to window
        sheet.row(y) = sheet.row(y).mul(cv::Scalar(0.94 - 0.0001 * y, 0.86, 0.76 + 0.0001 * y), 1);
    mirvak::Image page = lit(sheet);
    mirvak::removeBackground(page);
    EXPECT_GT(shareOf(grey(page.pixels)(cv::Rect(20, 20, 960, 200)) >= 250), 0.999);
    EXPECT_GT(shareOf(grey(page.pixels)(cv::Rect(20, 800, 960, 590)) >= 250), 0.999);
    const cv::Scalar seen = cv::mean(page.pixels(cv::Rect(300, 600, 400, 120)));
    EXPECT_GT(seen[2] - seen[0], 25) << "a panel that no edge parts from the paper";
}

TEST(ColourAreas, sealsOfEveryInkAreKeptAndLeaveTheTextBlack)
{
    using mirvak::SealColour;
    const std::pair<cv::Scalar, SealColour> inks[] = {{{120, 60, 200}, SealColour::blue},  // violet
                                                      {{195, 165, 225}, SealColour::blue}, // faint violet
                                                      {{225, 120, 50}, SealColour::red},   // orange
                                                      {{235, 195, 160}, SealColour::red}}; // faint orange
    for (const auto& [ink, colour] : inks) {
        cv::Mat sheet = made::textPage(size, 34);
        const cv::Mat text = grey(sheet) < 110;
        const cv::Mat plain = sheet.clone();
        made::stamp(sheet, {400, 600}, 280, ink);
        made::stamp(sheet, {480, 640}, 280, ink); // pressed twice
        cv::Mat difference, least, near;
        cv::absdiff(sheet, plain, difference);
        cv::extractChannel(difference, least, 1);
        cv::dilate(text, near, cv::Mat(), {-1, -1}, 2);
        double deepest = 0;
        cv::minMaxLoc(least, nullptr, &deepest);
        const cv::Mat seal = (least > 0.3 * deepest) & ~near;
        mirvak::Image page = lit(sheet, {0.6, 0.8, 2});
        mirvak::strengthenSeal(page, colour);
        std::vector<cv::Mat> c;
        cv::split(page.pixels, c);
        const cv::Mat most = cv::max(cv::max(c[0], c[1]), c[2]),
                      chroma = most - cv::min(cv::min(c[0], c[1]), c[2]);
        EXPECT_GT(static_cast<double>(cv::countNonZero((chroma > 80) & seal)) / cv::countNonZero(seal), 0.955)
            << ink;
        cv::dilate(seal, near, cv::Mat(), {-1, -1}, 4);
        const cv::Mat crossing = text & near;
        EXPECT_GT(static_cast<double>(cv::countNonZero((most < 128) & crossing)) / cv::countNonZero(crossing),
                  0.97)
            << ink;
        EXPECT_LT(shareOf(chroma(cv::Rect(0, 900, size.width, 400)) > 40), 1e-4) << "false colour";
        const cv::Scalar seen = cv::mean(page.pixels, seal);
        EXPECT_GT((seen[0] - seen[1]) * (ink[0] - ink[1]), 0) << "another hue " << ink;
    }
}

TEST(ColourAreas, aSealTooFaintToLearnItsInkFromIsRedAllTheSame)
{
    mirvak::Image page;
    page.pixels = made::blankPage(size);
    const cv::Rect mark(300, 400, 80, 80);
    page.pixels(mark).setTo(cv::Scalar(200, 180, 180));
    mirvak::strengthenSeal(page, mirvak::SealColour::red);
    const cv::Scalar seen = cv::mean(page.pixels(mark + cv::Point(20, 20) - cv::Size(40, 40)));
    EXPECT_GT(seen[0], 120);
    EXPECT_GT(seen[0], seen[1] + 30);
    EXPECT_GT(cv::mean(page.pixels(cv::Rect(600, 400, 80, 80)))[1], 245);
}

TEST(Sharpen, strengthensEdgesTakesNoiseAwayAndTreatsEveryColumnAlike)
{
    cv::Mat rows(60, 37, CV_8UC3); // no whole number of blocks
    for (int y = 0; y < rows.rows; ++y)
        rows.row(y).setTo(cv::Scalar::all(y < 30 ? 180 + 4 * (y % 2) : 90));
    const cv::Mat before = rows.clone();
    mirvak::sharpen(rows, 0.8, 3);
    for (int x = 1; x < rows.cols; ++x)
        ASSERT_EQ(cv::norm(rows.col(x), rows.col(0), cv::NORM_INF), 0) << x;
    EXPECT_GT(rows.ptr(29)[0], before.ptr(29)[0] + 5);
    EXPECT_LT(rows.ptr(30)[0], before.ptr(30)[0] - 5);
    EXPECT_LE(std::abs(rows.ptr(10)[0] - rows.ptr(11)[0]), 2) << "a difference that noise makes";
}

TEST(Specks, wholeShapesCountWhateverTheirTurns)
{
    cv::Mat black = cv::Mat::zeros(40, 60, CV_8UC1);
    const auto draw = [&black](const std::vector<cv::Point>& points) {
        for (const cv::Point& p : points)
            black.at<uchar>(p) = 255;
    };
    draw({{2, 2}, {2, 3}, {2, 4}, {3, 5}, {4, 4}, {4, 3}, {4, 2}});     // a cup: joined below, by corners
    draw({{20, 5}, {21, 6}, {22, 7}, {23, 6}, {24, 5}});                // five, by corners
    draw({{0, 20}, {0, 21}, {1, 20}, {1, 21}});                         // four at the border
    draw({{58, 38}, {59, 38}, {58, 39}, {59, 39}, {57, 39}});           // five in the corner
    draw({{30, 30}, {32, 30}, {34, 30}, {30, 32}, {32, 32}, {34, 32}}); // dust lies apart
    mirvak::removeSpecks(black, 4);
    EXPECT_EQ(cv::countNonZero(black), 7 + 5 + 5);
    EXPECT_EQ(cv::countNonZero(black(cv::Rect(0, 20, 2, 2))), 0);
    mirvak::removeSpecks(black, 5);
    EXPECT_EQ(cv::countNonZero(black), 7);
    mirvak::removeSpecks(black, 7);
    EXPECT_EQ(cv::countNonZero(black), 0);
}

TEST(ColourAreas, smallLongAndEvenPicturesAreBorne)
{
    const auto red = [](mirvak::Image& image) { mirvak::strengthenSeal(image, mirvak::SealColour::red); };
    const std::function<void(mirvak::Image&)> all[] = {
        mirvak::removeBackground, mirvak::processDocument, mirvak::threshold, mirvak::enhanceColour, red};
    for (const cv::Size shape : {cv::Size(1, 1), {2, 20000}, {20000, 2}, {37, 5}, {640, 480}}) {
        for (const int level : {0, 128, 255}) {
            for (const auto& process : all) {
                mirvak::Image image;
                image.pixels = cv::Mat(shape, CV_8UC3, cv::Scalar::all(level));
                process(image);
                ASSERT_EQ(image.pixels.size(), shape);
                EXPECT_GE(cv::mean(grey(image.pixels))[0], level > 0 ? 250 : 0) << shape << level;
            }
        }
    }
}
