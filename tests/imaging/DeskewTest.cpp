#include "Deskew.h"
#include "MadePages.h"
#include "PageShape.h"
#include "TextSkew.h"

#include <gtest/gtest.h>

#include <opencv2/imgproc.hpp>

using made::Corners;
using made::Desk;
using mirvak::Deskewed;

namespace {

const cv::Size frame(1632, 1224);
const cv::Size sheetSize(1000, 1414);

/// Four black dots at known places of a sheet: where they come out tells what became of the picture.
const std::array<cv::Point2d, 4> dots{{{200, 200}, {800, 200}, {800, 1200}, {200, 1200}}};

cv::Mat dottedSheet()
{
    cv::Mat sheet = made::blankPage(sheetSize);
    for (const cv::Point2d& dot : dots)
        cv::circle(sheet, dot, 18, {20, 20, 20}, cv::FILLED, cv::LINE_AA);
    return sheet;
}

/// The middle of what is dark in the quarter of the picture at that corner.
cv::Point2d dotIn(const cv::Mat& rgb, size_t corner)
{
    const int halfWidth = rgb.cols / 2, halfHeight = rgb.rows / 2;
    const cv::Rect quarter(
        corner == 1 || corner == 2 ? halfWidth : 0, corner >= 2 ? halfHeight : 0, halfWidth, halfHeight);
    cv::Mat grey, dark;
    cv::cvtColor(rgb(quarter), grey, cv::COLOR_RGB2GRAY);
    cv::threshold(grey, dark, 90, 255, cv::THRESH_BINARY_INV);
    const cv::Moments moments = cv::moments(dark, true);
    return {quarter.x + moments.m10 / moments.m00, quarter.y + moments.m01 / moments.m00};
}

mirvak::Image photograph(const Corners& corners, Desk desk)
{
    mirvak::Image image;
    image.pixels = made::desk(frame, desk);
    made::lay(image.pixels, dottedSheet(), corners, 0.8);
    made::shine(image.pixels, {0.75, 1, 2});
    return image;
}

} // namespace

TEST(Deskew, takesThePerspectiveOutAndKeepsTheShape)
{
    constexpr int margin = 15;
    const std::array<cv::Vec3d, 4> views{{{0, 0, 0}, {-8, 14, 0}, {5, 10, -12}, {7, 0, 16}}};
    for (const cv::Vec3d& view : views) {
        const Corners corners = made::photographed(frame, sheetSize, 1800, 760, view);
        mirvak::Image image = photograph(corners, Desk::wood), uncut;
        uncut.pixels = image.pixels.clone();
        ASSERT_EQ(mirvak::deskew(image, margin), Deskewed::page) << view;
        ASSERT_EQ(mirvak::deskew(uncut, 0), Deskewed::page);
        ASSERT_EQ(uncut.pixels.size(), image.pixels.size()) << "A4 stays whole";
        const cv::Rect inside(margin, margin, image.pixels.cols - 2 * margin, image.pixels.rows - 2 * margin);
        EXPECT_LE(cv::norm(uncut.pixels(inside), image.pixels(inside), cv::NORM_INF), 1);
        cv::Mat continued;
        cv::copyMakeBorder(image.pixels(inside),
                           continued,
                           margin,
                           margin,
                           margin,
                           margin,
                           cv::BORDER_REPLICATE | cv::BORDER_ISOLATED);
        EXPECT_EQ(cv::norm(image.pixels, continued, cv::NORM_INF), 0) << "no edge shows";
        const cv::Size whole = image.pixels.size();
        // 2 %: a pixel of error at a corner moves the estimate of the perspective by that much.
        EXPECT_NEAR(1.0 * whole.height / whole.width, 1.414, 0.028) << view;
        // As large as its nearest side was seen, so that no detail is lost.
        const auto side = [&](size_t a, size_t b) { return cv::norm(corners[a] - corners[b]); };
        const double across = std::max(side(0, 1), side(3, 2)), down = std::max(side(0, 3), side(1, 2));
        EXPECT_NEAR(whole.width, std::max(across, down / 1.414), 0.02 * across) << view;
        for (size_t i = 0; i < dots.size(); ++i) {
            const cv::Point2d expected(dots[i].x / sheetSize.width * whole.width,
                                       dots[i].y / sheetSize.height * whole.height);
            EXPECT_LE(cv::norm(dotIn(image.pixels, i) - expected), 1.2) << view << " dot " << i;
        }
    }
}

TEST(Deskew, givesUsualPaperAndCardsTheirRealSizeAndCutsOthersToTheirEdges)
{
    struct Laid
    {
        cv::Size2d mm;
        double across; // px of the picture
        bool isKnown;
        int cut; // px trimmed at both edges together
    };
    for (const Laid& laid : {Laid{{210, 297}, 760, true, 0},
                             {{297, 210}, 1300, true, 0},
                             {{215.9, 279.4}, 800, true, 0},
                             {{210, 148}, 880, true, 0},
                             {{85.6, 53.98}, 420, true, 20},
                             {{80, 190}, 380, false, 20}}) {
        const cv::Size sheet(cvRound(laid.mm.width * 4), cvRound(laid.mm.height * 4));
        const double down = laid.across * laid.mm.height / laid.mm.width;
        mirvak::Image image;
        image.pixels = made::desk(frame, Desk::dark);
        image.dpi = 111;
        made::lay(
            image.pixels, made::blankPage(sheet), made::placed({800, 600}, {laid.across, down}, 2), 0.8);
        ASSERT_EQ(mirvak::deskew(image, 10), Deskewed::page) << laid.mm;
        if (!laid.isKnown) {
            EXPECT_EQ(image.dpi, 111) << laid.mm;
            EXPECT_NEAR(image.pixels.cols, laid.across - laid.cut, 4);
            continue;
        }
        EXPECT_NEAR(image.dpi, laid.across / laid.mm.width * 25.4, 0.01 * image.dpi) << laid.mm;
        const auto inMm = [&](int pixels) { return (pixels + laid.cut) / image.dpi * 25.4; };
        EXPECT_NEAR(inMm(image.pixels.cols), laid.mm.width, 0.002 * laid.mm.width) << laid.mm;
        EXPECT_NEAR(inMm(image.pixels.rows), laid.mm.height, 0.002 * laid.mm.height) << laid.mm;
    }
}

TEST(Deskew, findsTheEdgesOfEachOfSeveralSheetsToAPixel)
{
    mirvak::Image image;
    image.pixels = made::desk({2200, 1200}, Desk::wood);
    for (const Corners& corners :
         {made::placed({560, 610}, {700, 990}, 6), made::placed({1620, 590}, {700, 990}, -9)})
        made::lay(image.pixels, dottedSheet(), corners, 0.8);
    made::shine(image.pixels, {0.75, 1, 2});
    const std::vector<mirvak::Image> pages = mirvak::deskewAll(image, 0);
    ASSERT_EQ(pages.size(), 2U);
    for (const mirvak::Image& page : pages) {
        for (size_t i = 0; i < 4; ++i) {
            const cv::Point2d dot = dotIn(page.pixels, i) + cv::Point2d(0.5, 0.5);
            EXPECT_NEAR(dot.x * sheetSize.width / page.pixels.cols, dots[i].x, 2) << i;
            EXPECT_NEAR(dot.y * sheetSize.height / page.pixels.rows, dots[i].y, 2) << i;
        }
    }
}

TEST(PageShape, isOfTheFormatWhoseShapeAndUsualSizeItHas)
{
    const double scale = frame.width / 385.0; // the usual view is 385 mm wide
    for (const cv::Size2d mm :
         {cv::Size2d(210, 297), {215.9, 279.4}, {215.9, 355.6}, {148, 210}, {105, 148}, {53.98, 85.6}}) {
        for (const cv::Size2d size : {mm * scale, cv::Size2d(mm.height, mm.width) * scale}) {
            const mirvak::PaperFormat* format = mirvak::formatOfShape(size, frame);
            ASSERT_TRUE(format) << mm;
            EXPECT_EQ(cv::Size2d(format->shortSide, format->longSide), mm);
        }
    }
    EXPECT_FALSE(mirvak::formatOfShape(cv::Size2d(200, 297) * scale, frame));
}

TEST(PageShape, isOfNoFormatWhenItWouldHaveToBeSeenFromVeryFarAway)
{
    const mirvak::PaperFormat* whole = mirvak::formatOfShape({770, 1089}, frame);
    ASSERT_TRUE(whole);
    EXPECT_EQ(whole->longSide, 297);
    EXPECT_FALSE(mirvak::formatOfShape({105, 148.5}, frame)) << "a stamp is no small A4";
}

TEST(PageShape, isThatOfTheSheetWhateverTheCameraAndItsView)
{
    for (const double focal : {0.7, 1.0, 1.4}) {
        for (const cv::Size2d sheet : {cv::Size2d(210, 297), {297, 210}, {80, 200}, {100, 100}}) {
            for (const cv::Vec3d& view : {cv::Vec3d(-20, 25, 15), {10, 12, -30}, {35, -20, -20}}) {
                const Corners seen = made::photographed(frame, sheet, focal * frame.width, 600, view);
                const double aspect = sheet.width / sheet.height;
                EXPECT_NEAR(mirvak::pageAspect(seen, frame) / aspect, 1, 0.001) << focal << sheet << view;
                const cv::Size2d size = mirvak::pageSize(seen, frame);
                EXPECT_NEAR(size.width / size.height / aspect, 1, 0.001);
                // No side becomes shorter than it was seen, and one stays as it was.
                const auto side = [&](size_t a, size_t b) { return cv::norm(seen[a] - seen[b]); };
                const double across = std::max(side(0, 1), side(3, 2)) / size.width,
                             down = std::max(side(0, 3), side(1, 2)) / size.height;
                EXPECT_NEAR(std::max(across, down), 1, 1e-9) << focal << sheet << view;
            }
        }
    }
}

TEST(PageShape, isOfNoFormatAtAnotherScaleThanTheLargestOnTheDesk)
{
    const auto sheet = [](double x, double y, double width, double height) {
        return mirvak::Outline{{{{x, y}, {x + width, y}, {x + width, y + height}, {x, y + height}}}, 1};
    };
    const auto formats = [&](const mirvak::Outline& other) {
        const auto shapes = mirvak::pageShapes({other, sheet(100, 100, 700, 990)}, frame);
        EXPECT_TRUE(shapes.at(1).format) << "A4";
        return shapes.at(0).format != nullptr;
    };
    EXPECT_TRUE(formats(sheet(1000, 300, 291, 183.5))) << "a card beside it";
    EXPECT_FALSE(formats(sheet(1000, 300, 364, 229.5))) << "a larger one of a card's shape";
    EXPECT_FALSE(formats(sheet(1000, 300, 380, 491.8))) << "what would be a letter seen from far away";
}

TEST(Deskew, leavesNoSliverOfTheDesk)
{
    mirvak::Image image = photograph(made::placed({820, 606}, {720, 1018}, -9, 0.05), Desk::dark),
                  all = image;
    all.pixels = image.pixels.clone();
    ASSERT_EQ(mirvak::deskew(all, 10'000), Deskewed::page);
    EXPECT_GE(std::min(all.pixels.cols, all.pixels.rows), 16) << "a margin never takes the whole page";
    ASSERT_EQ(mirvak::deskew(image, 15), Deskewed::page);
    cv::Mat grey;
    cv::cvtColor(image.pixels, grey, cv::COLOR_RGB2GRAY);
    for (const cv::Mat& edge : {grey.row(0), grey.row(grey.rows - 1), grey.col(0), grey.col(grey.cols - 1)}) {
        double darkest = 0;
        cv::minMaxLoc(edge, &darkest);
        EXPECT_GT(darkest, 110); // the paper in its darkest corner, less noise; the desk is at 60
    }
}

TEST(Deskew, levelsTheLinesOfAPageWithoutEdgesAndCutsNothingAway)
{
    cv::Mat sheet = made::textPage({1400, 1400}, 34);
    cv::multiply(sheet, cv::Scalar(225, 214, 190), sheet, 1 / 245.0);
    const cv::Rect middle(500, 500, 400, 400);
    const cv::Scalar paper(225, 214, 190);
    for (const double degrees : {-6.12, 0.37, 4.63, 11.0}) {
        mirvak::Image image;
        const cv::Mat turn = cv::getRotationMatrix2D({700, 700}, -degrees, 1);
        cv::warpAffine(sheet, image.pixels, turn, sheet.size(), cv::INTER_LINEAR, cv::BORDER_CONSTANT, paper);
        ASSERT_EQ(mirvak::deskew(image, 15), Deskewed::text) << degrees;
        // The picture grows as much as it must, and its middle stays.
        const double angle = std::abs(degrees) * CV_PI / 180,
                     grown = 1400 * (std::cos(angle) + std::sin(angle));
        EXPECT_NEAR(image.pixels.cols, grown, 5) << degrees;
        EXPECT_NEAR(image.pixels.rows, grown, 5) << degrees;
        cv::Mat unturned = image.pixels(
            cv::Rect((image.pixels.cols - 1400) / 2, (image.pixels.rows - 1400) / 2, 1400, 1400));
        EXPECT_LE(cv::norm(unturned(middle), sheet(middle), cv::NORM_L1) / sheet(middle).total(), 40)
            << degrees;
        for (const cv::Mat& edge : {image.pixels.row(0), image.pixels.col(image.pixels.cols - 1)})
            EXPECT_LE(cv::norm(edge, cv::Mat(edge.size(), CV_8UC3, paper), cv::NORM_INF), 20)
                << degrees << ": the new ground is like the old one";
        // A tenth of a degree is two pixels along a line of the page.
        EXPECT_LT(std::abs(mirvak::findTextSkew(image.pixels).value_or(90)), 0.1)
            << degrees << ": still askew";
    }
}

TEST(Deskew, levelsLinesThatRunUpwardsToo)
{
    mirvak::Image image;
    cv::rotate(made::textPage({1000, 1000}, 30), image.pixels, cv::ROTATE_90_CLOCKWISE);
    const cv::Mat turn = cv::getRotationMatrix2D({500, 500}, -2.87, 1), sideways = image.pixels.clone();
    cv::warpAffine(sideways,
                   image.pixels,
                   turn,
                   sideways.size(),
                   cv::INTER_LINEAR,
                   cv::BORDER_CONSTANT,
                   {245, 245, 245});
    EXPECT_NEAR(mirvak::findTextSkew(image.pixels).value_or(90), 2.87, 0.1);
}

TEST(Deskew, leavesAPictureWithoutPageAndTextAsItIs)
{
    cv::Mat grain(frame, CV_8UC3);
    cv::RNG(5).fill(grain, cv::RNG::NORMAL, 150, 60);
    cv::GaussianBlur(grain, grain, {0, 0}, 3);
    for (const cv::Mat& picture : {made::desk(frame, Desk::noisy), grain}) {
        mirvak::Image image;
        image.pixels = picture.clone();
        EXPECT_EQ(mirvak::deskew(image, 15), Deskewed::nothing);
        EXPECT_EQ(cv::norm(picture, image.pixels, cv::NORM_INF), 0);
    }
}
