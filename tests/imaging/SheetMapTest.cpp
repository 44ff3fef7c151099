#include "SheetMap.h"

#include "LineFinder.h"
#include "MadePages.h"
#include "OutlineJudge.h"
#include "PageCandidates.h"
#include "QuadOverlap.h"
#include "SmallLook.h"

#include <gtest/gtest.h>

#include <opencv2/imgproc.hpp>

#include <random>

using mirvak::ConvLayer;
using mirvak::FeaturePlane;

namespace {

FeaturePlane anyPlane(int width, int height, int channels, std::mt19937& random)
{
    FeaturePlane plane;
    plane.create(width, height, channels);
    std::uniform_real_distribution<float> value(-1, 1);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            for (int c = 0; c < channels; ++c)
                plane.at(x, y)[c] = value(random);
    return plane;
}

struct Weights
{
    std::vector<int8_t> taps;
    std::vector<float> factors, offsets;
};

Weights anyWeights(const ConvLayer::Shape& shape, std::mt19937& random)
{
    Weights weights;
    for (int i = 0; i < 9 * shape.inputs * shape.outputs; ++i)
        weights.taps.push_back(static_cast<int8_t>(static_cast<int>(random() % 255) - 127));
    for (int i = 0; i < shape.outputs; ++i) {
        weights.factors.push_back(0.001F * static_cast<float>(1 + i));
        weights.offsets.push_back(0.1F * static_cast<float>(i) - 0.5F);
    }
    return weights;
}

/// The sum as the definition has it, in the coordinates of the input.
double
summed(const FeaturePlane& in, const Weights& weights, const ConvLayer::Shape& shape, int x, int y, int o)
{
    double sum = 0;
    for (int i = 0; i < shape.inputs; ++i) {
        for (int t = 0; t < 9; ++t) {
            const int u = x + (t % 3 - 1) * shape.reach, v = y + (t / 3 - 1) * shape.reach;
            if (u >= 0 && v >= 0 && u < in.width() && v < in.height())
                sum += weights.taps[static_cast<size_t>((o * shape.inputs + i) * 9 + t)] *
                       static_cast<double>(in.at(u, v)[i]);
        }
    }
    const double whole =
        sum * weights.factors[static_cast<size_t>(o)] + weights.offsets[static_cast<size_t>(o)];
    return shape.isRectified ? std::max(0.0, whole) : whole;
}

} // namespace

class Convolution : public testing::TestWithParam<ConvLayer::Shape>
{
};

TEST_P(Convolution, sumsWhatLiesAboutEachPlaceAndNothingOutside)
{
    const ConvLayer::Shape shape = GetParam();
    std::mt19937 random(7);
    const Weights weights = anyWeights(shape, random);
    const ConvLayer layer(shape, weights.taps.data(), weights.factors.data(), weights.offsets.data());
    FeaturePlane out; // one for all: what an earlier picture left must not show
    for (const auto& [width, height] : {std::pair{21, 9}, {1, 1}, {2, 17}, {20, 10}}) {
        const FeaturePlane in = anyPlane(width, height, shape.inputs, random);
        layer.apply(in, out);
        ASSERT_EQ(out.width(), (width + shape.step - 1) / shape.step);
        ASSERT_EQ(out.height(), (height + shape.step - 1) / shape.step);
        for (int y = 0; y < out.height(); ++y)
            for (int x = 0; x < out.width(); ++x)
                for (int o = 0; o < shape.outputs; ++o)
                    ASSERT_NEAR(out.at(x, y)[o],
                                summed(in, weights, shape, x * shape.step, y * shape.step, o),
                                1e-4) // float against double
                        << width << "x" << height << " at " << x << ", " << y << ": " << o;
    }
}

INSTANTIATE_TEST_SUITE_P(Layers,
                         Convolution,
                         testing::Values(ConvLayer::Shape{3, 8, 2, 1, true},
                                         ConvLayer::Shape{8, 2, 1, 1, false},
                                         ConvLayer::Shape{5, 20, 1, 2, true},
                                         ConvLayer::Shape{28, 28, 2, 1, true},
                                         ConvLayer::Shape{1, 32, 1, 1, false}));

TEST(SheetMap, showsTheUppermostSheetAndNothingOfAnEmptyDesk)
{
    mirvak::SmallLook look;
    mirvak::SheetMap map;
    const cv::Size frame(1280, 960);
    const auto sheet = made::placed({640, 480}, {560, 792}, 12, 0.05);
    for (const made::Desk desk :
         {made::Desk::light, made::Desk::dark, made::Desk::wood, made::Desk::checked}) {
        SCOPED_TRACE(static_cast<int>(desk));
        cv::Mat picture = made::desk(frame, desk);
        made::shine(picture, {});
        map.build(look.build(picture));
        EXPECT_LT(map.share(), 0.15); // a tenth of it may be doubtful
        EXPECT_TRUE(map.quiet().empty()) << "where there may be an unknown sheet, all edges matter";

        picture = made::desk(frame, desk);
        made::lay(picture, made::textPage({1000, 1414}, 30), sheet, 0.8);
        made::shine(picture, {});
        map.build(look.build(picture));
        auto corners = sheet;
        for (cv::Point2d& corner : corners)
            corner = look.reduction().toReduced(corner);
        const auto fit = map.fitOf(corners);
        EXPECT_GT(fit.overlap, 0.75); // its border is blurred by a cell of eight pixels
        EXPECT_GT(fit.leastStep, 0.3);
        auto moved = corners;
        for (cv::Point2d& corner : moved)
            corner.x += 60;
        EXPECT_LT(map.fitOf(moved).overlap, fit.overlap - 0.1);
        EXPECT_LT(map.fitOf(moved).border, fit.border - 0.2);
        ASSERT_FALSE(map.quiet().empty());
        EXPECT_GT(cv::countNonZero(map.quiet()), map.quiet().total() / 4) << "the desk";
        double likeliest = 0;
        cv::minMaxLoc(map.inside(), nullptr, &likeliest, nullptr, nullptr, map.quiet());
        EXPECT_LT(likeliest, 0.02) << "where a sheet may be";
        for (size_t i = 0; i < 4; ++i) {
            const cv::Point2d middle = 0.5 * (corners[i] + corners[(i + 1) % 4]) / map.cell();
            EXPECT_EQ(map.quiet().at<uchar>(middle), 0) << "side " << i;
        }
    }
}

TEST(SheetMap, itsQuadrilateralsLieAboutTheMiddleOfTheSheet)
{
    mirvak::SmallLook look;
    mirvak::SheetMap map;
    cv::Point2d off(0, 0);
    int shown = 0;
    for (const made::Desk desk : {made::Desk::light, made::Desk::dark, made::Desk::wood}) {
        for (const double degrees : {12, -25}) {
            auto sheet = made::placed({640, 480}, {560, 760}, degrees, 0.05);
            cv::Mat picture = made::desk({1280, 960}, desk);
            made::lay(picture, made::textPage({1000, 1357}, 30), sheet, 0.8);
            made::shine(picture, {});
            map.build(look.build(picture));
            for (cv::Point2d& corner : sheet)
                corner = look.reduction().toReduced(corner);
            for (const auto& corners : map.quadrilaterals()) {
                EXPECT_GT(mirvak::overlapOf(corners, sheet), 0.85);
                for (size_t i = 0; i < 4; ++i)
                    off += 0.25 * (corners[i] - sheet[i]);
                ++shown;
            }
        }
    }
    ASSERT_GE(shown, 6);
    // One errs by a cell of eight pixels, all of them to no side.
    EXPECT_NEAR(off.x / shown, 0, 1.5);
    EXPECT_NEAR(off.y / shown, 0, 1.5);
}

// Cells of eight pixels, the picture ends within one: no edge of a quiet cell counts, and each of another
// does.
TEST(EdgeField, leavesOutWhatLiesInQuietCells)
{
    constexpr int cell = 8;
    mirvak::SmallLook look;
    cv::Mat picture = made::desk({645, 483}, made::Desk::wood);
    made::lay(picture, made::textPage({1000, 1414}, 30), made::placed({320, 240}, {280, 396}, 12), 0.8);
    const auto& planes = look.build(picture);
    const cv::Size cells(planes[0].cols / cell, planes[0].rows / cell);
    cv::Mat quiet(cells, CV_8UC1);
    cv::randu(quiet, 0, 2);
    for (const int side : {0, cells.width - 1})
        quiet.col(side).rowRange(10, 20) = 1;
    mirvak::EdgeField all, fewer;
    all.build(planes);
    fewer.build(planes, quiet, cell);
    const auto isQuiet = [&](const mirvak::EdgePoint& point) {
        const cv::Point at(point.x / cell, point.y / cell);
        return cv::Rect({}, cells).contains(at) && quiet.at<uchar>(at);
    };
    std::vector<cv::Point> wanted, got;
    for (const auto& point : all.points()) {
        const bool leftOut = isQuiet(point);
        if (!leftOut)
            wanted.emplace_back(point.x, point.y);
        ASSERT_EQ(*fewer.directionAt(point.x, point.y, false) == 0, leftOut);
        ASSERT_EQ(*fewer.directionAt(point.x, point.y, true) == 0, leftOut);
    }
    for (const auto& point : fewer.points())
        got.emplace_back(point.x, point.y);
    EXPECT_LT(got.size(), all.points().size() * 3 / 4);
    EXPECT_EQ(got, wanted);
}

TEST(FeaturePlane, addsTheSmallerPlaneFourTimesEach)
{
    std::mt19937 random(3);
    const FeaturePlane half = anyPlane(4, 3, 5, random);
    FeaturePlane whole = anyPlane(7, 5, 5, random);
    const FeaturePlane before = whole;
    whole.addEnlarged(half);
    for (int y = 0; y < 5; ++y)
        for (int x = 0; x < 7; ++x)
            for (int c = 0; c < 5; ++c)
                ASSERT_FLOAT_EQ(whole.at(x, y)[c], before.at(x, y)[c] + half.at(x / 2, y / 2)[c]);
}

// The map has learnt from whole sheets only: one that sees none does not count against a page half outside.
TEST(OutlineJudge, doesNotAskTheMapAboutPagesThatLeaveThePicture)
{
    const cv::Size frame(640, 480);
    cv::Mat picture = made::desk(frame, made::Desk::dark);
    made::lay(picture, made::blankPage({300, 400}), made::placed({320, 400}, {240, 320}, 0), 0.8);
    mirvak::SmallLook look, emptyLook;
    mirvak::EdgeField edges;
    mirvak::RegionField regions;
    mirvak::LineFinder lines;
    mirvak::QuadFinder quads;
    mirvak::SheetMap blind;
    mirvak::OutlineJudge judge;
    const auto& planes = look.build(picture);
    edges.build(planes);
    regions.build(planes, edges.change());
    quads.find(lines.find(edges, planes, regions, 72), look.reduction().size());
    blind.build(emptyLook.build(made::desk(frame, made::Desk::dark)));
    const auto& outlines = judge.judge(quads.quads(), planes, regions, blind);
    ASSERT_FALSE(outlines.empty());
    EXPECT_GT(outlines.front().confidence, 0.9);
}

// Outlines that nearly agree are one answer: each of them alone is less likely than that one of them is
// right.
TEST(OutlineJudge, countsOutlinesThatNearlyAgreeTogether)
{
    cv::Mat picture = made::desk({640, 480}, made::Desk::wood);
    made::lay(picture, made::textPage({600, 800}, 24), made::placed({320, 240}, {240, 320}, 12), 0.8);
    mirvak::PageCandidates candidates;
    mirvak::OutlineJudge judge;
    int unsure = 0;
    for (const mirvak::QuadFinder::Quad& quad : candidates.find(picture)) {
        const auto judged = [&](const std::vector<mirvak::QuadFinder::Quad>& quads) {
            return judge.judge(quads, candidates.planes(), candidates.regions(), candidates.map());
        };
        const auto alone = judged({quad});
        ASSERT_EQ(alone.size(), 1U);
        if (alone[0].confidence < 0.01 || alone[0].confidence > 0.95)
            continue;
        ++unsure;
        auto moved = quad;
        for (cv::Point2d& corner : moved.corners)
            corner.x += 0.01;
        const auto both = judged({quad, moved});
        ASSERT_EQ(both.size(), 1U);
        const double odds = alone[0].confidence / (1 - alone[0].confidence);
        EXPECT_NEAR(both[0].confidence, 2 * odds / (1 + 2 * odds), 0.02);
    }
    EXPECT_GT(unsure, 0);
}
