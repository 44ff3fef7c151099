#include "Outline.h"
#include "Codec.h"
#include "MadePages.h"
#include "OutlineWatch.h"

#include <gtest/gtest.h>

#include <opencv2/imgproc.hpp>

#include <cstdio>
#include <fstream>
#include <string>

using made::Corners;
using made::Desk;

namespace {

const cv::Size frame(1632, 1224);

// A reduced pixel is three of these; the outline of the preview is good to two of those, and the refined one
// to less than the width of the 5-pixel line with which it is drawn.
constexpr double previewTolerance = 6, refinedTolerance = 2;
// On a pattern the preview's line may catch on a line of the cloth beside the paper; the refined one, which a
// capture uses, may not.
constexpr double patternTolerance = 24, patternRefined = 3;

struct Scene
{
    const char* name;
    cv::Mat sheet;
    cv::Size2d size;
    double degrees;
    made::Light light;
};

std::vector<Scene> scenes()
{
    made::Light dim, shaded;
    dim.darkest = 0.6;
    dim.noise = 4;
    shaded.shadow = 0.5;
    return {
        {"text", made::textPage({1000, 1414}, 30), {700, 990}, -11, dim},
        {"table", made::tablePage({1000, 1414}), {720, 1018}, 4, {}},
        {"card", made::cardPage({500, 315}), {340, 214}, 63, dim},
        {"receipt", made::textPage({300, 1200}, 24), {230, 920}, 9, {}},
        {"blank", made::blankPage({1000, 1414}), {700, 990}, 38, {}},
        {"in part shadow", made::textPage({1000, 1414}, 34), {720, 1018}, 2, shaded},
    };
}

/// The corner nearest to the picture's top left comes first, then clockwise.
double errorOf(const Corners& found, Corners truth)
{
    const auto first = std::min_element(
        truth.begin(), truth.end(), [](const auto& a, const auto& b) { return a.x + a.y < b.x + b.y; });
    std::rotate(truth.begin(), first, truth.end());
    return made::farthest(found, truth);
}

void expectFound(const cv::Mat& picture,
                 const Corners& truth,
                 const std::string& name,
                 double preview = previewTolerance,
                 double refinedTo = refinedTolerance)
{
    const auto outline = mirvak::findOutline(picture);
    ASSERT_TRUE(outline) << name;
    EXPECT_LE(errorOf(outline->corners, truth), preview) << name;
    const auto refined = mirvak::refineOutline(picture, *outline);
    EXPECT_LE(errorOf(refined.corners, truth), refinedTo) << name;
    EXPECT_GE(outline->confidence, 0.6) << name;
    EXPECT_LE(outline->confidence, 1) << name;
}

} // namespace

TEST(Outline, isFoundOnEveryDesk)
{
    const std::vector<Scene> all = scenes();
    const std::array<std::pair<Desk, const char*>, 5> desks{{{Desk::light, "light"},
                                                             {Desk::dark, "dark"},
                                                             {Desk::wood, "wood"},
                                                             {Desk::noisy, "rough"},
                                                             {Desk::coloured, "coloured"}}};
    for (const auto& [desk, deskName] : desks) {
        for (const Scene& scene : all) {
            cv::Mat picture = made::desk(frame, desk);
            const Corners truth = made::placed({820, 606}, scene.size, scene.degrees, 0.06);
            made::lay(picture, scene.sheet, truth, 0.8);
            made::shine(picture, scene.light);
            expectFound(picture, truth, std::string(scene.name) + " on " + deskName);
        }
    }
}

TEST(Outline, isFoundOnPatternedClothAndOverOtherPaper)
{
    cv::Mat cloth = made::desk(frame, Desk::checked);
    const Corners onCloth = made::placed({820, 606}, {760, 1040}, -7);
    made::lay(cloth, made::textPage({1000, 1414}, 30), onCloth, 0.8);
    made::shine(cloth, {0.8, 1, 3});
    expectFound(cloth, onCloth, "cloth", patternTolerance, patternRefined);

    cv::Mat pile = made::desk(frame, Desk::wood);
    const Corners below = made::placed({660, 600}, {700, 990}, 8),
                  above = made::placed({960, 620}, {700, 990}, -5);
    cv::Mat older = made::tablePage({1000, 1414});
    older.convertTo(older, -1, 0.92); // paper yellows
    made::lay(pile, older, below, 0.8);
    made::lay(pile, made::textPage({1000, 1414}, 30), above, 0.8);
    made::shine(pile, {0.8, 1, 3});
    expectFound(pile, above, "pile");
}

// White on white under a shadow, over another sheet, beside a reflection: found for sure, and the whole of
// it.
TEST(Outline, isThatOfTheWholeUppermostSheetWhateverIsPrintedOnIt)
{
    cv::Mat photograph = made::blankPage({1000, 700});
    photograph(cv::Rect(50, 50, 900, 600)).setTo(cv::Scalar(60, 90, 140));
    photograph(cv::Rect(50, 50, 900, 250)).setTo(cv::Scalar(150, 190, 220));
    made::Light shaded;
    shaded.shadow = 0.55;
    for (const Desk desk : {Desk::light, Desk::checked, Desk::wood}) {
        const std::string name = "desk " + std::to_string(static_cast<int>(desk));
        cv::Mat border = made::desk(frame, desk), plain = border.clone();
        const Corners onDesk = made::placed({820, 606}, {900, 630}, 17, 0.05);
        made::lay(border, photograph, onDesk, 0.75);
        made::shine(border, {0.8, 1, 3});
        expectFound(border, onDesk, "photograph with a border, " + name, patternTolerance, patternRefined);

        const Corners page = made::placed({820, 606}, {720, 1018}, -6);
        made::lay(plain, made::blankPage({1000, 1414}), page, 0.75);
        made::shine(plain, shaded);
        expectFound(plain, page, "plain page in shadow, " + name, patternTolerance, patternRefined);
    }
}

TEST(Outline, isRefinedWherePaperIsHardlyLighterThanTheDesk)
{
    cv::Mat picture(frame, CV_8UC3, cv::Scalar::all(200)), sheet(99, 70, CV_8UC3, cv::Scalar::all(209));
    const Corners page = made::placed({820, 606}, {700, 990}, 7);
    made::lay(picture, sheet, page);
    mirvak::Outline seen{page, 1};
    for (cv::Point2d& corner : seen.corners)
        corner += cv::Point2d(4, -3);
    EXPECT_LE(errorOf(mirvak::refineOutline(picture, seen).corners, page), 1);
}

// What the sides say is not enough here: seen as a whole the one is a sheet and the other is none.
TEST(Outline, isToldByALookAtTheSheetWhereItsSidesSayLittle)
{
    made::Light shaded;
    shaded.darkest = 0.7;
    shaded.shadow = 0.5;
    shaded.noise = 3;
    cv::Mat picture = made::desk(frame, Desk::light);
    made::lay(picture, made::tablePage({1000, 1414}), made::placed({600, 560}, {760, 1070}, 38), 0.8);
    const Corners upper = made::placed({860, 620}, {300, 189}, 24, 0.04);
    made::lay(picture, made::cardPage({500, 315}), upper, 0.88);
    made::shine(picture, shaded);
    expectFound(picture, upper, "a card over a page, half in a shadow");

    cv::Mat pile = made::desk(frame, Desk::dark);
    made::lay(pile, made::tablePage({1000, 1414}), made::placed({600, 560}, {760, 1070}, 38), 0.8);
    const Corners receipt = made::placed({860, 620}, {230, 900}, 24, 0.04);
    made::lay(pile, made::textPage({300, 1200}, 24), receipt);
    made::shine(pile, shaded);
    if (const auto outline = mirvak::findOutline(pile)) {
        EXPECT_LE(errorOf(outline->corners, receipt), 2 * previewTolerance) << "a part of the sheet below";
    }
}

TEST(Outline, endsAtTheBorderOfThePictureWhateverTheRowStride)
{
    cv::Mat wide(frame.height + 10, frame.width + 37, CV_8UC3, cv::Scalar::all(0));
    cv::Mat picture = wide(cv::Rect(20, 5, frame.width, frame.height));
    made::desk(frame, Desk::wood).copyTo(picture);
    const Corners whole = made::placed({816, 700}, {800, 1131}, 0);
    made::lay(picture, made::textPage({1000, 1414}, 30), whole, 0.8);
    made::shine(picture, {0.8, 1, 3});
    Corners seen = whole;
    seen[2].y = seen[3].y = frame.height - 1;
    expectFound(picture, seen, "cut off below");
}

TEST(Outline, isNotSeenWhereThereIsNoPage)
{
    for (const Desk desk :
         {Desk::light, Desk::dark, Desk::wood, Desk::checked, Desk::noisy, Desk::coloured}) {
        cv::Mat picture = made::desk(frame, desk);
        made::shine(picture, {0.7, 0.5, 4});
        EXPECT_FALSE(mirvak::findOutline(picture)) << "empty desk " << static_cast<int>(desk);
    }
    cv::Mat pens = made::desk(frame, Desk::wood);
    for (int i = 0; i < 4; ++i)
        made::lay(pens,
                  cv::Mat(20, 300, CV_8UC3, cv::Scalar(30 + 40 * i, 40, 150)),
                  made::placed({300 + 300.0 * i, 500 + 60.0 * i}, {500, 32}, 30 * i + 20));
    EXPECT_FALSE(mirvak::findOutline(pens)) << "pens";
    cv::Mat text = made::textPage(frame, 30), table = made::tablePage(frame), noise(frame, CV_8UC3);
    made::shine(text, {0.7, 1, 4});
    made::shine(table, {0.7, 1, 4});
    cv::RNG(1).fill(noise, cv::RNG::UNIFORM, 0, 256);
    EXPECT_FALSE(mirvak::findOutline(text)) << "nothing but text";
    EXPECT_FALSE(mirvak::findOutline(table)) << "a table's frame is no page";
    EXPECT_FALSE(mirvak::findOutline(noise)) << "noise";
    for (const cv::Size tiny : {cv::Size(1, 1), {3, 500}, {63, 63}, {64, 64}})
        EXPECT_FALSE(mirvak::findOutline(cv::Mat(tiny, CV_8UC3, cv::Scalar::all(200)))) << tiny;
}

// The pages of the virtual desk, at every size that its cameras have; one is a book, whose edges are bent.
// Among nearly equal outlines the one is shown whose sides lie on the page's.
TEST(Outline, liesOnThePagesOfTheDesk)
{
    std::ifstream truth(LUMRO_DESK_DIR "/truth.csv");
    std::string line;
    std::getline(truth, line);
    int pages = 0;
    while (std::getline(truth, line)) {
        char name[40], size[40];
        Corners page;
        ASSERT_EQ(std::sscanf(line.c_str(),
                              "%39[^,],%39[^,],%lf,%lf,%lf,%lf,%lf,%lf,%lf,%lf",
                              name,
                              size,
                              &page[0].x,
                              &page[0].y,
                              &page[1].x,
                              &page[1].y,
                              &page[2].x,
                              &page[2].y,
                              &page[3].x,
                              &page[3].y),
                  10)
            << line;
        if (name == std::string("12-book"))
            continue;
        const auto picture =
            mirvak::readImage(std::string(LUMRO_DESK_DIR "/pictures/") + size + '/' + name + ".jpg");
        ASSERT_TRUE(picture) << line;
        constexpr double tornEdge = 7; // of the receipt, whose end is no straight line
        expectFound(picture->pixels, page, line, tornEdge, tornEdge);
        ++pages;
    }
    EXPECT_GE(pages, 11);
}

// Half of a spread is a straight-edged thing of paper too, but cropping to it loses the other half. The lines
// of both pages sink towards the fold, so that the whole is no straight-edged thing.
TEST(Outline, doesNotHalveAnOpenBook)
{
    const auto page = [](unsigned seed) {
        cv::Mat sheet = made::blankPage({555, 900});
        made::textPage({420, 760}, 30, seed)(cv::Rect(60, 0, 300, 760))
            .copyTo(sheet(cv::Rect(130, 70, 300, 760)));
        return sheet;
    };
    for (const Desk desk : {Desk::light, Desk::dark, Desk::wood}) {
        for (const double sink : {0, 20, 40}) {
            const cv::Point2d top(816, 160), bottom(816, 1060);
            const Corners left{{{260, 160}, top, bottom, {260, 1060}}},
                right{{top, {1370, 160}, {1370, 1060}, bottom}};
            cv::Mat book = made::desk(frame, desk), single = book.clone();
            made::lay(book, page(1), left);
            made::lay(book, page(2), right);
            for (int x = -12; x < 12; ++x) { // the shadow of the fold
                const cv::Mat fold = book(cv::Rect(816 + x, 160 + static_cast<int>(sink), 1, 901));
                fold.convertTo(fold, -1, 0.5 + 0.04 * std::abs(x));
            }
            made::shine(book, {0.8, 1, 2});
            if (const auto outline = mirvak::findOutline(book)) {
                EXPECT_LE(errorOf(outline->corners, {left[0], right[1], right[2], left[3]}),
                          2 * previewTolerance)
                    << static_cast<int>(desk) << " sinking by " << sink;
            }
            made::lay(single, page(1), left);
            // Half of the line's width: nothing blurs the edges of this page.
            expectFound(single, left, "a single page of that shape", 2 * previewTolerance, 2.5);
        }
    }
}

cv::Mat frameWith(const std::optional<Corners>& page, unsigned seed)
{
    cv::Mat picture = made::desk(frame, Desk::wood);
    if (page)
        made::lay(picture, made::textPage({1000, 1414}, 30), *page, 0.8);
    made::shine(picture, {0.9, 1, 3}, seed);
    return picture;
}

// What is seen of a page may be too little to tell where it ends.
TEST(Outline, isMissedWhereAPageLeavesThePictureAndThatIsKnown)
{
    mirvak::OutlineFinder finder;
    int found = 0, known = 0, looks = 0;
    cv::Mat leaving;
    for (const Desk desk : {Desk::light, Desk::dark, Desk::wood, Desk::checked, Desk::coloured}) {
        for (const double degrees : {-25, 4, 15, 40}) {
            cv::Mat picture = made::desk(frame, desk);
            EXPECT_TRUE(!finder.find(picture) && !finder.mayLeavePicture()) << "an empty desk";
            const Corners page = made::placed({40, 560}, {700, 990}, degrees);
            made::lay(picture, made::textPage({1000, 1414}, 30), page, 0.8);
            made::shine(picture, {0.8, 1, 3});
            const bool isFound = finder.find(picture).has_value();
            EXPECT_FALSE(isFound && finder.mayLeavePicture());
            found += isFound ? 1 : 0;
            ++looks;
            if (finder.mayLeavePicture()) {
                ++known;
                leaving = picture;
            }
        }
    }
    EXPECT_GE(found, 2);
    EXPECT_GE(found + known, 15) << "of " << looks;
    ASSERT_FALSE(leaving.empty());
    for (const cv::Mat& next : {cv::Mat(3, 3, CV_8UC3, cv::Scalar::all(0)),
                                frameWith(made::placed({820, 606}, {720, 1018}, -6), 1)}) {
        finder.find(leaving);
        ASSERT_TRUE(finder.mayLeavePicture());
        finder.find(next);
        EXPECT_FALSE(finder.mayLeavePicture()) << "of the picture before";
    }
}

// Pictures one after the other: noise alone repeats the answer, but not for ever; a page that moves a little,
// leaves or comes is seen in the very picture.
TEST(OutlineWatch, repeatsAnAnswerOnlyWhileThePictureStays)
{
    const Corners page = made::placed({820, 606}, {720, 1018}, -6),
                  moved = made::placed({834, 606}, {720, 1018}, -6);
    mirvak::OutlineWatch watch;
    std::vector<bool> searched;
    for (unsigned seed = 1; seed <= 5; ++seed) {
        const auto found = watch.find(frameWith(page, seed));
        ASSERT_TRUE(found);
        EXPECT_LE(errorOf(found->corners, page), previewTolerance);
        searched.push_back(watch.searched());
    }
    EXPECT_EQ(searched, (std::vector<bool>{true, false, false, true, false}));
    const auto shifted = watch.find(frameWith(moved, 6));
    ASSERT_TRUE(shifted);
    EXPECT_LE(errorOf(shifted->corners, moved), previewTolerance) << "moved by a centimetre at most";
    EXPECT_FALSE(watch.find(frameWith({}, 7))) << "taken away";
    EXPECT_TRUE(watch.find(frameWith(page, 8))) << "laid there again";
    cv::Mat small;
    cv::resize(frameWith(page, 9), small, {}, 0.5, 0.5, cv::INTER_AREA);
    const auto halved = watch.find(small);
    ASSERT_TRUE(halved) << "another size";
    EXPECT_LE(halved->corners[2].x, small.cols);
    EXPECT_FALSE(watch.find(cv::Mat(1, 1, CV_8UC3, cv::Scalar::all(0))));
    EXPECT_FALSE(watch.find(cv::Mat(1, 1, CV_8UC3, cv::Scalar::all(0))));
}

// Of a camera's frames that change each second one is searched, of a fast one's each third; after a pause the
// next one is.
TEST(OutlineWatch, isAFrameOrTwoLateWhereFramesChange)
{
    const auto pageAt = [](int step) { return made::placed({700 + 40. * step, 606}, {720, 1018}, -6); };
    mirvak::OutlineWatch watch;
    mirvak::OutlineWatch::Time now{};
    int step = 0, seen = 0;
    struct Frame
    {
        int after; ///< ms
        bool isSearched;
    };
    for (const Frame& frame : {Frame{0, true},
                               {60, false},
                               {60, true},
                               {60, false},
                               {1000, true},
                               {40, false},
                               {40, false},
                               {40, true},
                               {60, false}}) {
        now += std::chrono::milliseconds(frame.after);
        if (frame.isSearched)
            seen = step;
        const auto found = watch.find(frameWith(pageAt(step), static_cast<unsigned>(step)), now);
        ASSERT_TRUE(found);
        EXPECT_LE(errorOf(found->corners, pageAt(seen)), previewTolerance) << step;
        ++step;
    }
    EXPECT_FALSE(watch.find(frameWith({}, 7), now + std::chrono::milliseconds(60)));
    cv::Mat small;
    cv::resize(frameWith(pageAt(0), 8), small, {}, 0.5, 0.5, cv::INTER_AREA);
    const auto halved = watch.find(small, now + std::chrono::milliseconds(70));
    ASSERT_TRUE(halved) << "of another size each is";
    EXPECT_LE(halved->corners[2].x, small.cols);
}

// So little that hardly anything of the whole picture changes: only what lies beside its edges.
TEST(OutlineWatch, seesABlankPageThatMovesByItsMargin)
{
    mirvak::OutlineWatch watch;
    for (const double shift : {0., 9.}) {
        const Corners page = made::placed({820 + shift, 606}, {720, 1018}, 0);
        cv::Mat picture = made::desk(frame, Desk::dark);
        made::lay(picture, made::blankPage({720, 1018}), page);
        made::shine(picture, {0.9, 1, 3});
        const auto found = watch.find(picture);
        ASSERT_TRUE(found);
        EXPECT_LE(errorOf(found->corners, page), previewTolerance) << shift;
        EXPECT_TRUE(watch.searched());
    }
}
