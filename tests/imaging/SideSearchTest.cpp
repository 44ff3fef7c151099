#include "SideSearch.h"
#include "EdgeField.h"
#include "MadePages.h"
#include "Outline.h"
#include "PageAspect.h"
#include "PageCandidates.h"
#include "SecondEvidence.h"

#include <gtest/gtest.h>

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <string>

using made::Corners;

namespace {

const cv::Size frame(1632, 1224), smallFrame(640, 480);

/// The outline with one side drawn out or cut short between its neighbours.
Corners withSideAt(const Corners& corners, size_t side, double share)
{
    Corners moved = corners;
    const size_t next = (side + 1) % 4, before = (side + 3) % 4, after = (side + 2) % 4;
    moved[side] = corners[before] + (corners[side] - corners[before]) * share;
    moved[next] = corners[after] + (corners[next] - corners[after]) * share;
    return moved;
}

double nearestOf(const std::vector<Corners>& all, const Corners& truth)
{
    double least = 1e9;
    for (const Corners& one : all)
        least = std::min(least, made::farthest(one, truth));
    return least;
}

/// A lamp's reflection: nothing of what lies below is left.
void glare(cv::Mat& picture, const cv::Point& middle, const cv::Size& radii)
{
    cv::Mat lamp(picture.size(), CV_8UC3, cv::Scalar::all(0));
    cv::ellipse(lamp, middle, radii, 0, 0, 360, cv::Scalar::all(255), cv::FILLED);
    cv::GaussianBlur(lamp, lamp, {}, 25);
    picture += 1.5 * lamp;
}

} // namespace

TEST(SideByFormat, endsAUsualSheetByTheOtherThreeSides)
{
    struct
    {
        const char* name;
        cv::Size2d size;
    } const sheets[] = {{"A4", {210, 297}},
                        {"A5 across", {210, 148}},
                        {"Letter", {215.9, 279.4}},
                        {"card", {85.6, 53.98}},
                        {"photograph", {100, 150}}};
    for (const auto& sheet : sheets) {
        for (const cv::Vec3d& view : {cv::Vec3d(0, 0, 0), {-20, 15, 5}, {35, -10, 20}, {170, 20, -8}}) {
            const double across = sheet.size.width < sheet.size.height ? 160 : 250;
            const Corners truth = made::photographed(
                smallFrame, sheet.size, mirvak::usualFocal * smallFrame.width, across, view);
            for (size_t side = 0; side < 4; ++side) {
                for (const double share : {0.7, 1.4}) {
                    const auto closed =
                        mirvak::withSideByFormat(smallFrame, withSideAt(truth, side, share), side);
                    EXPECT_LT(nearestOf(closed, truth), 1) << sheet.name << view << side << " " << share;
                }
            }
        }
    }
}

TEST(SideByFormat, staysInThePictureAndOutOfNonsense)
{
    const cv::Rect2d seen(0, 0, smallFrame.width - 1, smallFrame.height - 1);
    const Corners low = made::placed({320, 380}, {200, 180}, 3);
    const auto closed = mirvak::withSideByFormat(smallFrame, low, 2);
    EXPECT_FALSE(closed.empty());
    for (const Corners& corners : closed)
        EXPECT_TRUE(seen.contains(corners[2]) && seen.contains(corners[3])) << corners[2] << corners[3];
    const Corners point{{{5, 5}, {5, 5}, {5, 5}, {5, 5}}};
    EXPECT_TRUE(mirvak::withSideByFormat(smallFrame, point, 0).empty());
}

TEST(SideOnEdges, findsTheFaintEdgeBeyondAndBeforeTheSide)
{
    cv::Mat picture(smallFrame, CV_8UC3, cv::Scalar(120, 110, 100));
    const Corners truth = made::placed({320, 240}, {210, 300}, 12, 0.04);
    made::lay(picture, made::blankPage({420, 600}), truth);
    made::shine(picture, {1, 1, 2});
    mirvak::SmallLook look;
    mirvak::EdgeField edges;
    edges.build(look.build(picture));
    for (size_t side = 0; side < 4; ++side) {
        for (const double share : {0.75, 1.2}) {
            const Corners wrong = withSideAt(truth, side, share);
            const auto moved = mirvak::withSideOnEdges(edges, wrong, side);
            ASSERT_FALSE(moved.empty());
            EXPECT_LE(moved.size(), 3U);
            EXPECT_LT(made::farthest(moved.front(), truth), 1.5) << side << " " << share;
            for (const Corners& one : moved) {
                EXPECT_GT(made::farthest(one, wrong), 4) << "where it was";
                EXPECT_LT(cv::norm(one[(side + 2) % 4] - wrong[(side + 2) % 4]), 1e-6) << "another side";
                EXPECT_LT(cv::norm(one[(side + 3) % 4] - wrong[(side + 3) % 4]), 1e-6) << "another side";
            }
        }
    }
    const Corners outside{{{-40, -40}, {-10, -40}, {-10, -10}, {-40, -10}}};
    EXPECT_TRUE(mirvak::withSideOnEdges(edges, outside, 1).empty());
}

TEST(SecondEvidence, tellsUsualShapesAndBurntSides)
{
    constexpr size_t usual = mirvak::pageEvidenceCount - 1, burnt = usual + 1, explained = usual + 2,
                     unseen = usual + 3;
    const Corners card = made::placed({320, 240}, {270, 170}, -9);
    const auto evidenceOf = [&](const cv::Mat& picture, const Corners& corners) {
        mirvak::SmallLook look;
        mirvak::EdgeField edges;
        edges.build(look.build(picture));
        mirvak::QuadFinder quads;
        quads.find({}, smallFrame);
        quads.add(corners, edges, look.planes());
        std::vector<mirvak::SecondEvidence> evidence;
        mirvak::PageEvidence known{};
        known.fill(0.25F);
        mirvak::gatherSecondEvidence(quads.quads(), look.planes(), {known}, evidence);
        return evidence.at(0);
    };
    cv::Mat picture(smallFrame, CV_8UC3, cv::Scalar(120, 110, 100));
    made::lay(picture, made::blankPage({540, 340}), card);
    const auto plain = evidenceOf(picture, card);
    EXPECT_EQ(plain.front(), 0.25F) << "what was known is lost";
    EXPECT_EQ(plain[usual - 1], 0.25F) << "what was known is lost";
    EXPECT_EQ(plain.back(), 1);
    EXPECT_GT(plain[usual], 0.7);
    EXPECT_EQ(plain[burnt], 0);
    EXPECT_GT(plain[explained], 0.9);
    EXPECT_EQ(plain[unseen], 0);

    const auto odd = evidenceOf(picture, withSideAt(card, 1, 1.25));
    EXPECT_LT(odd[usual], 0.3) << "such a long thing is no usual sheet";
    EXPECT_LT(odd[explained], 0.3) << "there is no edge";
    EXPECT_EQ(odd[unseen], 0.25F);

    cv::ellipse(picture, 0.5 * (card[1] + card[2]), {60, 110}, 0, 0, 360, cv::Scalar::all(255), cv::FILLED);
    const auto shone = evidenceOf(picture, card);
    EXPECT_GT(shone[burnt], 0.9);
    EXPECT_GT(shone[explained], 0.75) << "a reflection explains why there is no edge";
    EXPECT_EQ(shone[unseen], 0.25F);
}

// A whole side is gone in each: what is printed near it is not the end of the sheet.
TEST(Outline, endsWhereTheSheetDoesThoughASideIsHidden)
{
    made::Light light;
    light.darkest = 0.85;
    const Corners card = made::placed({820, 606}, {560, 353}, 8, 0.02);
    for (const made::Desk desk :
         {made::Desk::light, made::Desk::dark, made::Desk::wood, made::Desk::coloured}) {
        const std::string name = "desk " + std::to_string(static_cast<int>(desk));
        cv::Mat shone = made::desk(frame, desk);
        made::lay(shone, made::cardPage({1000, 630}), card, 0.8);
        made::shine(shone, light);
        glare(shone, 0.5 * (card[2] + card[3]), {200, 80});
        const auto found = mirvak::findOutline(shone);
        ASSERT_TRUE(found) << "a reflection over a side, " << name;
        EXPECT_LT(made::farthest(found->corners, card), 6) << "a reflection over a side, " << name;
    }

    const Corners page = made::placed({820, 606}, {620, 877}, 8, 0.02);
    cv::Mat covered = made::desk(frame, made::Desk::dark);
    made::lay(covered, made::textPage({1000, 1414}, 30), page, 0.8);
    made::shine(covered, light);
    cv::line(covered, page[2] + cv::Point2d(60, 10), page[3] + cv::Point2d(-300, 5), {60, 40, 90}, 34);
    const auto penned = mirvak::findOutline(covered);
    ASSERT_TRUE(penned) << "a page with a pen along its side";
    EXPECT_LT(made::farthest(penned->corners, page), 24);
}
