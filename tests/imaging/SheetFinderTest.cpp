#include "SheetFinder.h"
#include "MadeDesks.h"
#include "QuadOverlap.h"
#include "ReadingOrder.h"

#include <gtest/gtest.h>

#include <opencv2/imgproc.hpp>

using made::Corners;
using made::Desk;

namespace {

const cv::Size frame(1632, 1224);

void expectSheets(const cv::Mat& picture,
                  const std::vector<Corners>& truth,
                  const std::string& name,
                  double least)
{
    const std::vector<mirvak::Outline> found = mirvak::findSheets(picture);
    ASSERT_EQ(found.size(), truth.size()) << name;
    for (size_t i = 0; i < truth.size(); ++i)
        EXPECT_GE(mirvak::overlapOf(mirvak::refineOutline(picture, found[i]).corners, truth[i]), least)
            << name << ", in reading order the " << i;
}

} // namespace

// Sides that a shadow touches may be off by its width, a few millimetres.
class SheetsOnDesk : public ::testing::TestWithParam<Desk>
{
};

TEST_P(SheetsOnDesk, AreToldApartInReadingOrder)
{
    for (int kind = 0; kind < made::sheetSceneKinds; ++kind) {
        const made::ManySheets scene = made::manySheets(kind, GetParam());
        expectSheets(scene.picture, scene.truth, scene.name, 0.9);
    }
}

INSTANTIATE_TEST_SUITE_P(Sheets,
                         SheetsOnDesk,
                         ::testing::Values(Desk::light, Desk::dark, Desk::wood, Desk::noisy, Desk::coloured));

TEST(Sheets, AreReadAsARowWhereTheyShareHalfOfTheirHeight)
{
    const auto box = [](double x, double y) {
        return mirvak::Outline{{{{x, y}, {x + 80, y}, {x + 80, y + 100}, {x, y + 100}}}, 1};
    };
    for (const auto& [lower, isRow] : {std::pair(40.0, true), {60.0, false}}) {
        std::vector<mirvak::Outline> sheets{box(200, 0), box(0, lower)};
        mirvak::sortForReading(sheets);
        EXPECT_EQ(sheets[0].corners[0].x, isRow ? 0 : 200) << lower;
    }
}

TEST(Sheets, AreFoundOnPatternedClothToo)
{
    const made::ManySheets pair = made::manySheets(10, Desk::checked);
    expectSheets(pair.picture, pair.truth, pair.name, 0.97);
}

TEST(Sheets, NothingElseIsAnswered)
{
    for (const Desk kind :
         {Desk::light, Desk::dark, Desk::wood, Desk::checked, Desk::noisy, Desk::coloured}) {
        cv::Mat bare = made::desk(frame, kind), page = bare.clone(), ring = bare.clone();
        made::shine(bare, {0.7, 0.5, 4});
        EXPECT_TRUE(mirvak::findSheets(bare).empty()) << "a bare desk " << static_cast<int>(kind);
        // A photograph, a table and text on one page.
        cv::Mat sheet = made::textPage({1000, 1414}, 30);
        sheet(cv::Rect(120, 150, 420, 300)).setTo(cv::Scalar(70, 90, 80));
        made::tablePage({500, 500}).copyTo(sheet(cv::Rect(400, 700, 500, 500)));
        const Corners place = made::placed({820, 606}, {720, 1018}, 7);
        made::lay(page, sheet, place, 0.8);
        made::shine(page, {0.8, 1, 3});
        expectSheets(page, {place}, "one page", 0.97);
        if (kind == Desk::checked)
            continue;
        std::vector<Corners> around; // and not the desk that they enclose
        for (int i = 0; i < 9; ++i) {
            if (i == 4)
                continue;
            around.push_back(made::placed({476 + 340.0 * (i % 3), 392 + 220.0 * (i / 3)}, {320, 200}, 0));
            made::lay(ring, made::cardPage({500, 315}), around.back());
        }
        expectSheets(ring, around, "around an empty place", 0.95);
    }
    cv::Mat text = made::textPage(frame, 30), table = made::tablePage(frame);
    text(cv::Rect(400, 300, 500, 350)).setTo(cv::Scalar(70, 90, 80));
    for (cv::Mat* filling : {&text, &table}) {
        made::shine(*filling, {0.8, 1, 3});
        EXPECT_TRUE(mirvak::findSheets(*filling).empty()) << "a page that fills the picture";
    }
}

// An open book gives both of its pages or stays whole.
TEST(Sheets, NoHalfOfABookIsLost)
{
    for (const Desk kind : {Desk::light, Desk::dark, Desk::wood}) {
        for (const double sink : {0, 30}) {
            cv::Mat book = made::desk(frame, kind);
            const cv::Point2d top(816, 160 + sink), bottom(816, 1060 + sink);
            made::lay(book, made::blankPage({555, 900}), {{{260, 160}, top, bottom, {260, 1060}}});
            made::lay(book, made::textPage({555, 900}, 30), {{top, {1370, 160}, {1370, 1060}, bottom}});
            for (int x = -12; x < 12; ++x) {
                const cv::Mat fold = book(cv::Rect(816 + x, 160 + static_cast<int>(sink), 1, 901));
                fold.convertTo(fold, -1, 0.5 + 0.04 * std::abs(x));
            }
            made::shine(book, {0.8, 1, 2});
            double seen = 0;
            for (const mirvak::Outline& part : mirvak::findSheets(book))
                seen +=
                    mirvak::overlapOf(part.corners, {{{260, 160}, {1370, 160}, {1370, 1060}, {260, 1060}}});
            EXPECT_TRUE(seen == 0 || seen > 0.9) << static_cast<int>(kind) << " " << sink << ": " << seen;
        }
    }
}
