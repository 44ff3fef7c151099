#include "Background.h"
#include "Enhance.h"
#include "MadePages.h"
#include "PaperModel.h"
#include "Seal.h"
#include "Threshold.h"
#include "Watermark.h"

#include <gtest/gtest.h>

#include <opencv2/imgproc.hpp>

#include <functional>
#include <sstream>

namespace {

const cv::Size size(1000, 1414);
const cv::Point sealCentre(620, 1100);
constexpr int sealDiameter = 260;

/// A page of text under uneven light, with a seal over its last lines.
struct Page
{
    /// `pale`: how much of the print's darkness is missing, as in a faint copy.
    explicit Page(const cv::Scalar& ink = {200, 30, 40}, double pale = 0) : sheet(made::textPage(size, 34))
    {
        text = darkerThan(sheet, 110);
        sheet = sheet * (1 - pale) + made::blankPage(size) * pale;
        const cv::Mat unstamped = sheet.clone();
        made::stamp(sheet, sealCentre, sealDiameter, ink);
        cv::Mat difference;
        cv::absdiff(sheet, unstamped, difference);
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
        if (document) // a camera in the dark
            made::shine(page.image.pixels, {1, 1, 7}, 2);
        const double redBefore = surplus(page.image.pixels, 0, 1, page.seal);
        document ? mirvak::processDocument(page.image) : mirvak::removeBackground(page.image);
        EXPECT_GT(share(grey(page.image.pixels) >= 250, page.paper), 0.99) << document;
        EXPECT_GT(share(grey(page.image.pixels) < 140, page.text), 0.9) << document;
        EXPECT_GT(surplus(page.image.pixels, 0, 1, page.seal), 0.8 * redBefore) << document;
    }
}

TEST(PaperModel, knowsThePaperUnderAllThatLiesOnIt)
{
    const auto lit = [](cv::Mat sheet) {
        made::shine(sheet, {0.55, 1, 3});
        return sheet;
    };
    cv::Mat paper = made::blankPage(size), printed = made::textPage(size, 34);
    made::stamp(printed, sealCentre, sealDiameter, {200, 30, 40});
    printed(cv::Rect(150, 400, 300, 260)).setTo(cv::Scalar(70, 60, 50));   // a photograph
    printed(cv::Rect(600, 450, 250, 90)).setTo(cv::Scalar(245, 225, 120)); // a coloured box
    cv::Mat seen, wanted = paper.clone();
    made::shine(wanted, {0.55, 1, 0});
    const mirvak::PaperModel model(lit(printed));
    EXPECT_NEAR(model.noise(), 3, 0.8);
    cv::resize(wanted, wanted, model.paper().size(), 0, 0, cv::INTER_AREA);
    model.paper().convertTo(seen, CV_8U);
    EXPECT_LE(cv::norm(seen, wanted, cv::NORM_INF), 24);
    EXPECT_LE(cv::norm(seen, wanted, cv::NORM_L1) / static_cast<double>(seen.total() * 3), 2);
}

TEST(PaperModel, followsTheLightIntoASoftShadow)
{
    cv::Mat seen = made::blankPage(size), wanted = seen.clone();
    made::shine(seen, {0.9, 0.5, 2});
    made::shine(wanted, {0.9, 0.5, 0});
    const cv::Mat paper = mirvak::PaperModel(seen).paper();
    cv::resize(wanted, wanted, paper.size(), 0, 0, cv::INTER_AREA);
    paper.convertTo(seen, CV_8U);
    EXPECT_LE(cv::norm(seen, wanted, cv::NORM_L1) / static_cast<double>(seen.total() * 3), 2);
}

TEST(PaperModel, measuresTheNoiseThatACameraHasSmoothed)
{
    cv::Mat noise(size, CV_32FC3), seen;
    cv::RNG(3).fill(noise, cv::RNG::NORMAL, 0, 6);
    cv::GaussianBlur(noise, noise, {3, 3}, 0); // quarter, half, quarter each way: 3/8 of it are left
    cv::add(made::blankPage(size), noise, seen, cv::noArray(), CV_8U);
    EXPECT_NEAR(mirvak::PaperModel(seen).noise(), 6 * 0.375, 0.5);
}

TEST(PaperModel, takesTheLightAwayWithoutBandsAndInItsPlace)
{
    for (const bool isUpright : {false, true}) {
        cv::Mat light(size, CV_32FC3), noise(size, CV_32FC3), paper, grey, line;
        cv::RNG(4).fill(noise, cv::RNG::NORMAL, 0, 1); // hides the steps of whole levels
        for (int y = 0; y < size.height; ++y)
            for (int x = 0; x < size.width; ++x)
                light.at<cv::Vec3f>(y, x) =
                    cv::Vec3f::all(170 + 70 * std::sin(2 * float(CV_PI) * float(isUpright ? y : x) / 500));
        cv::add(light, noise, paper, cv::noArray(), CV_8U);
        cv::add(0.6 * light, noise, grey, cv::noArray(), CV_8U);
        mirvak::Flattening how;
        how.whiteFrom = 1;
        how.noiseMargin = 0;
        mirvak::flatten(grey, mirvak::PaperModel(paper), how);
        cv::extractChannel(grey, grey, 1);
        cv::reduce(grey, line, isUpright ? 1 : 0, cv::REDUCE_AVG, CV_32F);
        line = line.reshape(1, 1);
        line = line.colRange(20, line.cols - 20);
        double least = 0, most = 0;
        cv::minMaxLoc(line, &least, &most);
        EXPECT_GT(least, 0.6 * 255 - 5) << isUpright;
        EXPECT_LT(most, 0.6 * 255 + 5) << isUpright;
        const cv::Mat steps = line.colRange(1, line.cols) - line.colRange(0, line.cols - 1);
        EXPECT_LT(cv::norm(steps, cv::NORM_INF), 1.2) << isUpright; // half of it is noise
    }
}

TEST(Colour, documentsAreDarkAndCrisp)
{
    // Faint print, and a ruler of fine lines.
    Page document({200, 30, 40}, 0.4), background({200, 30, 40}, 0.4);
    const cv::Rect fine(150, 1240, 240, 60);
    for (mirvak::Image* image : {&document.image, &background.image}) {
        for (int x = 0; x < fine.width; x += 4)
            image->pixels(cv::Rect(fine.x + x, fine.y, 2, fine.height)) *= 0.6;
        cv::GaussianBlur(image->pixels, image->pixels, {}, 1); // as a lens sees it
    }
    mirvak::processDocument(document.image);
    mirvak::flatten(background.image.pixels, mirvak::PaperModel(background.image.pixels), {});
    const cv::Mat crisp = grey(document.image.pixels), plain = grey(background.image.pixels);
    EXPECT_LT(cv::mean(crisp, document.text)[0], cv::mean(plain, document.text)[0] - 20);
    const auto depth = [](const cv::Mat& lines) {
        cv::Scalar mean, deviation;
        cv::meanStdDev(lines, mean, deviation);
        return deviation[0];
    };
    EXPECT_GT(depth(crisp(fine)), 1.2 * depth(plain(fine)));
}

TEST(Watermark, brokenTextShowsTheReplacementAndGoesOn)
{
    const auto written = [](const std::string& text) {
        mirvak::Image image;
        image.pixels = made::blankPage({160, 40});
        EXPECT_TRUE(mirvak::drawText(image, text, {4, 4}, {20, 0xff0000, 0}));
        return image.pixels;
    };
    const std::string sign = "\xef\xbf\xbd";
    for (const char* broken : {"\xc3", "\xe4\xb8", "\x80", "\xff"})
        EXPECT_EQ(cv::norm(written(broken + std::string("A b")), written(sign + "A b"), cv::NORM_INF), 0)
            << ::testing::PrintToString(broken);
    EXPECT_GT(cv::norm(written(sign + "A b"), written("A b"), cv::NORM_INF), 0);
    const cv::Mat blank = written("");
    const auto beginningAt = [](double x) {
        mirvak::Image image;
        image.pixels = made::blankPage({160, 40}) * 0;
        EXPECT_TRUE(mirvak::drawText(image, "MMM", {x, 4}, {20, 0xff0000, 0}));
        return image.pixels;
    };
    EXPECT_EQ(cv::norm(beginningAt(-8).colRange(0, 100), beginningAt(12).colRange(20, 120), cv::NORM_INF), 0)
        << "what begins beside the picture is cut off there";
    for (const char* letter : {"\xc3\x84", "\xe0\xb8\x81", "\xf0\x9d\x90\x80"}) { // two to four bytes
        const cv::Mat inked = grey(blank) - grey(written(letter));
        EXPECT_LT(cv::boundingRect(inked).width, 26) << letter << " is one letter";
    }
}

TEST(Colour, thresholdKeepsFaintPrintAndTheDotsOfSmallLetters)
{
    Page faint({200, 30, 40}, 0.45);
    mirvak::threshold(faint.image);
    EXPECT_GT(share(grey(faint.image.pixels) == 0, faint.text), 0.8);

    // Print of ten points on A4 in a picture of eight megapixels: the dot of an i has four pixels across.
    mirvak::Image page;
    page.pixels = made::blankPage({2448, 3264});
    int dots = 0;
    for (int y = 100; y < 3200; y += 310) {
        page.pixels(cv::Rect(y / 2 + 220, y + 150, 2, 3)).setTo(cv::Scalar::all(60)); // dust
        for (int x = 100; x < 2400; x += 230, ++dots)
            cv::circle(page.pixels,
                       {16 * x + dots % 16, 16 * y + dots % 13},
                       2 * 16,
                       {50, 48, 52},
                       cv::FILLED,
                       cv::LINE_AA,
                       4);
    }
    const cv::Rect block(1200, 300, 100, 100); // of a headline in grey
    page.pixels(block).setTo(cv::Scalar::all(120));
    made::shine(page.pixels, {0.8, 1, 2});
    mirvak::threshold(page);
    cv::Mat labels;
    EXPECT_EQ(cv::connectedComponents(grey(page.pixels) == 0, labels) - 1, dots + 1);
    EXPECT_EQ(cv::countNonZero(grey(page.pixels(block - cv::Size(8, 8) + cv::Point(4, 4)))), 0) << "hollow";
}

TEST(Colour, thresholdGivesTwoLevelsCleanPaperAndWholeStrokes)
{
    Page page;
    mirvak::threshold(page.image);
    const cv::Mat black = grey(page.image.pixels) == 0, white = grey(page.image.pixels) == 255;
    EXPECT_EQ(cv::countNonZero(black | white), size.area());
    EXPECT_GT(share(white, page.paper), 0.999);
    EXPECT_GT(share(black, page.text), 0.9);

    for (const made::Light& light : {made::Light{0.5, 0.6, 4}, {0.9, 1, 10}}) { // the second is dusk
        mirvak::Image blank;
        blank.pixels = made::blankPage(size);
        made::shine(blank.pixels, light);
        mirvak::threshold(blank);
        EXPECT_LT(size.area() - cv::countNonZero(grey(blank.pixels)), 20) << light.noise; // specks of noise
    }
}

TEST(Colour, thresholdLeavesStrokesAsWideAsTheyAre)
{
    constexpr int height = 400, slant = 8;
    double excess = 0;                  // columns, of six strokes
    for (const int level : {40, 150}) { // dark print and pale
        for (const int width : {3, 5, 9}) {
            mirvak::Image page;
            page.pixels = made::blankPage(size);
            const std::vector<cv::Point> stroke{{500, 400},
                                                {500 + width, 400},
                                                {500 + width + slant, 400 + height},
                                                {500 + slant, 400 + height}};
            cv::fillConvexPoly(page.pixels, stroke, cv::Scalar::all(level), cv::LINE_AA);
            cv::GaussianBlur(page.pixels, page.pixels, {}, 0.8); // as a lens sees it
            made::shine(page.pixels, {0.8, 1, 2});
            mirvak::threshold(page);
            const cv::Mat rows = grey(page.pixels)(cv::Rect(0, 450, size.width, 300));
            excess += cv::countNonZero(rows == 0) / 300.0 - (width + 1);
        }
    }
    EXPECT_NEAR(excess / 6, 0.1, 0.35) << "a third of the way instead of half makes 0.7 or -0.5";
}

TEST(Colour, sealsAreStrengthenedOnWhitePaper)
{
    struct Case
    {
        cv::Scalar ink;
        mirvak::SealColour colour;
        int own, other;
    };
    using mirvak::SealColour;
    for (const Case& kind : {Case{{200, 30, 40}, SealColour::red, 0, 1},
                             Case{{235, 175, 180}, SealColour::red, 0, 1}, // faint
                             Case{{40, 50, 190}, SealColour::blue, 2, 0},
                             Case{{60, 140, 170}, SealColour::blue, 2, 0}}) { // greenish
        Page page(kind.ink);
        const double before = surplus(page.image.pixels, kind.own, kind.other, page.seal);
        mirvak::Image other;
        other.pixels = page.image.pixels.clone();
        mirvak::strengthenSeal(page.image, kind.colour);
        mirvak::strengthenSeal(other, kind.colour == SealColour::red ? SealColour::blue : SealColour::red);
        EXPECT_GT(share(grey(page.image.pixels) >= 250, page.paper), 0.99) << kind.ink;
        EXPECT_GT(surplus(page.image.pixels, kind.own, kind.other, page.seal), 1.1 * before) << kind.ink;
        EXPECT_LT(cv::mean(grey(page.image.pixels), page.seal)[0],
                  0.9 * cv::mean(grey(other.pixels), page.seal)[0])
            << "stronger than where the other colour is: " << kind.ink;
        EXPECT_GT(share(grey(page.image.pixels) < 140, page.text), 0.9) << kind.ink;
        cv::Mat around;
        cv::dilate(page.seal, around, cv::Mat(), {-1, -1}, 3);
        EXPECT_GT(share(grey(page.image.pixels) < 60, page.text & around), 0.5) << "print under the seal";
    }
}

TEST(Colour, enhancingGivesThePagesOwnColoursButNoPictureOfTheNight)
{
    Page usual;
    usual.image.pixels = usual.image.pixels * 0.8 + cv::Scalar::all(25); // stray light
    mirvak::enhanceColour(usual.image);
    EXPECT_GT(share(grey(usual.image.pixels) >= 250, usual.paper), 0.99);
    EXPECT_LT(cv::mean(grey(usual.image.pixels), usual.text)[0], 70) << "hazy";
    EXPECT_GT(surplus(usual.image.pixels, 0, 1, usual.seal), 0.9 * surplus(usual.sheet, 0, 1, usual.seal));
    mirvak::Image night; // with the cover on the lens there is nothing but noise
    night.pixels = cv::Mat(size, CV_8UC3, cv::Scalar::all(8));
    made::shine(night.pixels, {1, 1, 2});
    mirvak::enhanceColour(night);
    EXPECT_LT(cv::mean(grey(night.pixels))[0], 30);
    mirvak::Image pale; // where nothing is dark there is no haze to take away
    pale.pixels = made::blankPage(size);
    pale.pixels(cv::Rect(300, 300, 200, 200)).setTo(cv::Scalar::all(170));
    mirvak::enhanceColour(pale);
    EXPECT_GT(cv::mean(grey(pale.pixels)(cv::Rect(330, 330, 140, 140)))[0], 130);
}

// Fields of flat colours on paper under light that falls off, and what each kind of processing makes of them:
// read off pictures that were looked at. Processors round differently, by less than the tolerance.
TEST(Colour, everyColourComesOutAsItDid)
{
    constexpr int tolerance = 4, side = 60, count = 12;
    const auto coloursOf = [](const char* text) {
        std::istringstream stream(text);
        std::vector<cv::Vec3b> colours;
        for (int rgb = 0; stream >> std::hex >> rgb;)
            colours.push_back(cv::Vec3b(rgb >> 16 & 255, rgb >> 8 & 255, rgb & 255));
        return colours;
    };
    const auto fields =
        coloursOf("f0eee8 2d2a2d 787878 aaaaaa c81e28 2832be 3c963c ebdc5a c8a082 3c8caa 783cb4 e0822d");
    cv::Mat sheet = made::blankPage({800, 600});
    const auto field = [&](int i) { return cv::Rect(40 + 125 * (i % 6), 80 + 260 * (i / 6), side, side); };
    for (int i = 0; i < count; ++i)
        sheet(field(i)).setTo(fields.at(i));
    made::shine(sheet, {0.6, 1, 0});
    const auto red = [](mirvak::Image& image) { mirvak::strengthenSeal(image, mirvak::SealColour::red); };
    const auto blue = [](mirvak::Image& image) { mirvak::strengthenSeal(image, mirvak::SealColour::blue); };
    using Process = std::function<void(mirvak::Image&)>;
    for (const auto& [process, colours] : std::vector<std::pair<Process, const char*>>{
             {mirvak::removeBackground,
              "ffffff 2f2c30 7d7e82 b2b3b8 d1202b 2a35ce 3f9e41 f6e961 d2a98d 3f94b8 7d3fc3 ea8931"},
             {mirvak::processDocument,
              "ffffff 2f2c30 7d7e82 b2b3b8 d1202b 2a35ce 3f9e41 f6e961 d2a98d 3f94b8 7d3fc3 ea8931"},
             {mirvak::threshold,
              "ffffff 000000 000000 ffffff 000000 000000 000000 ffffff ffffff 000000 000000 000000"},
             {mirvak::enhanceColour,
              "ffffff 1d1a1e 727377 abadb2 d40b18 1622cf 2d982f f7e84f d0a282 2b8bb4 722dc2 ed7f1b"},
             {red, "ffffff 000000 303237 9b9fa9 b50006 0000d8 016f01 fefc16 c05935 0158a9 3001c2 cf4202"},
             {blue, "ffffff 000000 303237 9b9fa9 df0000 0006ac 016f01 fffd10 e0864b 004987 30009b fe4400"}}) {
        SCOPED_TRACE(colours);
        mirvak::Image image;
        image.pixels = sheet.clone();
        process(image);
        for (int i = 0; i < count; ++i) {
            const cv::Scalar mean = cv::mean(image.pixels(field(i) - cv::Size(40, 40) + cv::Point(20, 20)));
            for (int c = 0; c < 3; ++c)
                EXPECT_NEAR(mean[c], coloursOf(colours).at(i)[c], tolerance)
                    << "field " << i << " channel " << c;
        }
    }
}
