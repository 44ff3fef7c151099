#include "CloseLook.h"

#include "MadePages.h"

#include <gtest/gtest.h>

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>

using mirvak::CloseLook;
using mirvak::Outline;

namespace {

const cv::Size frame(640, 480);

/// A picture as the search of outlines sees it.
struct Seen
{
    explicit Seen(const cv::Mat& picture) { edges.build(look.build(picture)); }

    mirvak::SmallLook look;
    mirvak::EdgeField edges;
};

/// A card of four colours, one to each quarter, on black.
cv::Mat quarteredCard(const CloseLook::Corners& corners)
{
    cv::Mat card(200, 200, CV_8UC3), picture(frame, CV_8UC3, cv::Scalar(0, 0, 0));
    card(cv::Rect(0, 0, 100, 100)) = cv::Scalar(250, 50, 100);
    card(cv::Rect(100, 0, 100, 100)) = cv::Scalar(50, 250, 100);
    card(cv::Rect(100, 100, 100, 100)) = cv::Scalar(50, 100, 250);
    card(cv::Rect(0, 100, 100, 100)) = cv::Scalar(200, 200, 200);
    made::lay(picture, card, corners);
    return picture;
}

cv::Vec3b colourOf(const cv::Mat& patch, int x, int y)
{
    const auto& pixel = patch.at<cv::Vec4b>(y, x);
    return {pixel[0], pixel[1], pixel[2]};
}

CloseLook::Corners grown(CloseLook::Corners corners, double factor)
{
    const cv::Point2d middle = 0.25 * (corners[0] + corners[1] + corners[2] + corners[3]);
    for (cv::Point2d& corner : corners)
        corner = middle + factor * (corner - middle);
    return corners;
}

double sumOf(const std::vector<Outline>& outlines)
{
    double sum = 0;
    for (const Outline& outline : outlines)
        sum += outline.confidence;
    return sum;
}

} // namespace

TEST(CloseLook, pullsTheOutlineStraightWithARimAround)
{
    const auto corners = made::placed({310, 250}, {260, 180}, 35, 0.2);
    const Seen seen(quarteredCard(corners));
    CloseLook close;
    const cv::Mat patch = close.patchOf(corners, seen.look.planes(), seen.edges);
    ASSERT_EQ(patch.type(), CV_8UC4);
    ASSERT_EQ(patch.size(), cv::Size(CloseLook::side, CloseLook::side));
    constexpr int low = CloseLook::rim + 6, high = CloseLook::side - 1 - low;
    EXPECT_LE(cv::norm(colourOf(patch, low, low), cv::Vec3b(250, 50, 100), cv::NORM_INF), 2);
    EXPECT_LE(cv::norm(colourOf(patch, high, low), cv::Vec3b(50, 250, 100), cv::NORM_INF), 2);
    EXPECT_LE(cv::norm(colourOf(patch, high, high), cv::Vec3b(50, 100, 250), cv::NORM_INF), 2);
    EXPECT_LE(cv::norm(colourOf(patch, low, high), cv::Vec3b(200, 200, 200), cv::NORM_INF), 2);
    for (const int away : {2, CloseLook::side - 3}) {
        EXPECT_EQ(colourOf(patch, away, low), cv::Vec3b(0, 0, 0)) << away;
        EXPECT_EQ(colourOf(patch, low, away), cv::Vec3b(0, 0, 0)) << away;
    }
    // The card ends between two places: both see its edge, those further off see none.
    for (const int along : {low, high}) {
        for (const int edge : {CloseLook::rim, CloseLook::side - CloseLook::rim}) {
            EXPECT_GT(patch.at<cv::Vec4b>(along, edge)[3] + patch.at<cv::Vec4b>(along, edge - 1)[3], 60);
            EXPECT_GT(patch.at<cv::Vec4b>(edge, along)[3] + patch.at<cv::Vec4b>(edge - 1, along)[3], 60);
        }
        EXPECT_EQ(patch.at<cv::Vec4b>(along, CloseLook::rim - 4)[3], 0);
        EXPECT_EQ(patch.at<cv::Vec4b>(along, CloseLook::rim + 4)[3], 0);
    }
}

TEST(CloseLook, goesOnWithTheColoursBeyondThePicture)
{
    cv::Mat picture(frame, CV_8UC3, cv::Scalar(30, 60, 90));
    picture.colRange(0, 320) = cv::Scalar(200, 180, 160);
    const Seen seen(picture);
    CloseLook close;
    const cv::Mat patch =
        close.patchOf({{{0, 0}, {639, 0}, {639, 479}, {0, 479}}}, seen.look.planes(), seen.edges);
    EXPECT_EQ(patch.at<cv::Vec4b>(20, 0), cv::Vec4b(200, 180, 160, 0));
    EXPECT_EQ(patch.at<cv::Vec4b>(20, CloseLook::side - 1), cv::Vec4b(30, 60, 90, 0));
    EXPECT_EQ(patch.at<cv::Vec4b>(0, 12), cv::Vec4b(200, 180, 160, 0));
}

// Equally likely before: a sheet's own outline, ones that are too large and too small, and none at all.
TEST(CloseLook, findsTheOutlineThatTheSheetHas)
{
    for (const made::Desk desk :
         {made::Desk::light, made::Desk::dark, made::Desk::wood, made::Desk::checked}) {
        SCOPED_TRACE(static_cast<int>(desk));
        const auto corners = made::placed({320, 240}, {280, 360}, 8, 0.05);
        cv::Mat picture = made::desk(frame, desk);
        made::lay(picture, made::textPage({1000, 1286}, 30), corners, 0.8);
        made::shine(picture, {});
        const Seen seen(picture);
        CloseLook close;
        std::vector<Outline> outlines{
            {grown(corners, 0.8), 0.25}, {grown(corners, 1.15), 0.25}, {corners, 0.25}};
        close.weigh(outlines, seen.look.planes(), seen.edges);
        EXPECT_EQ(outlines[0].corners, corners);
        EXPECT_GT(outlines[0].confidence, 0.5);
        EXPECT_TRUE(std::is_sorted(outlines.begin(), outlines.end(), [](const auto& a, const auto& b) {
            return a.confidence > b.confidence;
        }));
        EXPECT_LE(sumOf(outlines), 1);

        std::vector<Outline> wrong{{grown(corners, 0.8), 0.6}};
        close.weigh(wrong, seen.look.planes(), seen.edges);
        EXPECT_LT(wrong[0].confidence, 0.5);
    }
}

TEST(CloseLook, saysTheSameOfTheMirroredSheet)
{
    const auto corners = made::placed({300, 250}, {280, 360}, 0, 0.2);
    cv::Mat picture = made::desk(frame, made::Desk::wood);
    made::lay(picture, made::textPage({1000, 1286}, 30), corners, 0.8);
    made::shine(picture, {});
    const auto certaintyIn = [](const cv::Mat& seenPicture, const CloseLook::Corners& outline) {
        const Seen seen(seenPicture);
        std::vector<Outline> outlines{{grown(outline, 1.06), 0.2}};
        CloseLook().weigh(outlines, seen.look.planes(), seen.edges);
        return std::log(outlines[0].confidence / (1 - outlines[0].confidence));
    };
    const double seenAsItIs = certaintyIn(picture, corners);
    for (const int axis : {0, 1, -1}) { // upside down, mirrored, both
        CloseLook::Corners turned = corners;
        for (cv::Point2d& corner : turned) {
            corner.x = axis == 0 ? corner.x : frame.width - 1 - corner.x;
            corner.y = axis == 1 ? corner.y : frame.height - 1 - corner.y;
        }
        // Beginning at the left upper corner again.
        turned = axis == 0   ? CloseLook::Corners{turned[3], turned[2], turned[1], turned[0]}
                 : axis == 1 ? CloseLook::Corners{turned[1], turned[0], turned[3], turned[2]}
                             : CloseLook::Corners{turned[2], turned[3], turned[0], turned[1]};
        cv::Mat mirrored;
        cv::flip(picture, mirrored, axis);
        EXPECT_NEAR(certaintyIn(mirrored, turned), seenAsItIs, 0.001) << axis;
    }
}

TEST(CloseLook, leavesWhatIsCertainAndWhatIsHopeless)
{
    const auto corners = made::placed({320, 240}, {280, 360}, 8);
    cv::Mat picture = made::desk(frame, made::Desk::dark);
    made::lay(picture, made::textPage({1000, 1286}, 30), corners);
    const Seen seen(picture);
    CloseLook close;
    std::vector<Outline> certain{{grown(corners, 0.7), 0.98}, {corners, 0.01}};
    close.weigh(certain, seen.look.planes(), seen.edges);
    EXPECT_EQ(certain[0].confidence, 0.98);
    EXPECT_EQ(certain[1].confidence, 0.01);

    std::vector<Outline> hopeless{{corners, 0.002}, {grown(corners, 0.7), 0.001}};
    close.weigh(hopeless, seen.look.planes(), seen.edges);
    EXPECT_DOUBLE_EQ(hopeless[0].confidence, 0.002);
    EXPECT_DOUBLE_EQ(hopeless[1].confidence, 0.001);

    std::vector<Outline> none;
    close.weigh(none, seen.look.planes(), seen.edges);
    EXPECT_TRUE(none.empty());
}
