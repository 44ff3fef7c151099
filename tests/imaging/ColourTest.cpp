#include "Background.h"
#include "Enhance.h"
#include "MadePages.h"
#include "Seal.h"
#include "Threshold.h"

#include <gtest/gtest.h>

#include <opencv2/imgproc.hpp>

namespace {

const cv::Size size(1000, 1414);
const cv::Point sealCentre(620, 1100);
constexpr int sealDiameter = 260;

/// A page of text under uneven light, with a seal over its last lines.
struct Page
{
    explicit Page(const cv::Scalar& ink = {200, 30, 40}) : sheet(made::textPage(size, 34))
    {
        text = darkerThan(sheet, 110);
        made::stamp(sheet, sealCentre, sealDiameter, ink);
        cv::Mat difference;
        cv::absdiff(sheet, made::textPage(size, 34), difference);
        cv::cvtColor(difference, difference, cv::COLOR_RGB2GRAY);
        seal = (difference > 40) & ~text;
        cv::dilate(text | seal, paper, cv::Mat(), {-1, -1}, 4);
        paper = ~paper;
        image.pixels = sheet.clone();
        made::shine(image.pixels, {0.55, 0.7, 3});
    }
    static cv::Mat darkerThan(const cv::Mat& rgb, int level)
    {
        cv::Mat grey;
        cv::cvtColor(rgb, grey, cv::COLOR_RGB2GRAY);
        return grey < level;
    }
    cv::Mat sheet, text, seal, paper; // masks of where what is
    mirvak::Image image;
};

double share(const cv::Mat& condition, const cv::Mat& where)
{
    return 1.0 * cv::countNonZero(condition & where) / cv::countNonZero(where);
}

cv::Mat grey(const cv::Mat& rgb)
{
    cv::Mat result;
    cv::cvtColor(rgb, result, cv::COLOR_RGB2GRAY);
    return result;
}

/// Mean of one channel less another over a mask.
double surplus(const cv::Mat& rgb, int channel, int other, const cv::Mat& where)
{
    const cv::Scalar mean = cv::mean(rgb, where);
    return mean[channel] - mean[other];
}

} // namespace

TEST(Colour, paperBecomesWhiteUnderAnyLightAndInkStays)
{
    for (const bool document : {false, true}) {
        Page page;
        const double redBefore = surplus(page.image.pixels, 0, 1, page.seal);
        document ? mirvak::processDocument(page.image) : mirvak::removeBackground(page.image);
        EXPECT_GT(share(grey(page.image.pixels) >= 250, page.paper), 0.99) << document;
        EXPECT_GT(share(grey(page.image.pixels) < 140, page.text), 0.9) << document;
        EXPECT_GT(surplus(page.image.pixels, 0, 1, page.seal), 0.8 * redBefore) << document;
    }
}

TEST(Colour, thresholdGivesTwoLevelsCleanPaperAndWholeStrokes)
{
    Page page;
    mirvak::threshold(page.image);
    const cv::Mat black = grey(page.image.pixels) == 0, white = grey(page.image.pixels) == 255;
    EXPECT_EQ(cv::countNonZero(black | white), size.area());
    EXPECT_GT(share(white, page.paper), 0.999);
    EXPECT_GT(share(black, page.text), 0.9);

    mirvak::Image blank;
    blank.pixels = made::blankPage(size);
    made::shine(blank.pixels, {0.5, 0.6, 4});
    mirvak::threshold(blank);
    EXPECT_LT(size.area() - cv::countNonZero(grey(blank.pixels)), 20); // specks of noise
}

TEST(Colour, sealsAreStrengthenedOnWhitePaper)
{
    struct Case
    {
        cv::Scalar ink;
        mirvak::SealColour colour;
        int own, other;
    };
    for (const Case& kind : {Case{{200, 30, 40}, mirvak::SealColour::red, 0, 1},
                             Case{{40, 50, 190}, mirvak::SealColour::blue, 2, 0}}) {
        Page page(kind.ink);
        const double before = surplus(page.image.pixels, kind.own, kind.other, page.seal);
        mirvak::strengthenSeal(page.image, kind.colour);
        EXPECT_GT(share(grey(page.image.pixels) >= 250, page.paper), 0.99) << kind.own;
        EXPECT_GT(surplus(page.image.pixels, kind.own, kind.other, page.seal), 1.1 * before) << kind.own;
        EXPECT_GT(share(grey(page.image.pixels) < 140, page.text), 0.9) << kind.own;
    }
}

TEST(Colour, enhancingKeepsHuesAndRaisesContrast)
{
    Page page;
    page.image.pixels.convertTo(page.image.pixels, -1, 0.6, 40); // a flat picture
    const double contrast =
        cv::mean(grey(page.image.pixels), page.paper)[0] - cv::mean(grey(page.image.pixels), page.text)[0];
    mirvak::enhanceColour(page.image);
    const double after =
        cv::mean(grey(page.image.pixels), page.paper)[0] - cv::mean(grey(page.image.pixels), page.text)[0];
    EXPECT_GT(after, 1.2 * contrast);
    const cv::Scalar seal = cv::mean(page.image.pixels, page.seal);
    EXPECT_GT(seal[0], seal[2]); // the ink: much red, little green, a trace more blue
    EXPECT_GE(seal[2], seal[1] - 4);
}
