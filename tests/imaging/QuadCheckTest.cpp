#include "QuadCheck.h"

#include "MadePages.h"
#include "SmallLook.h"

#include <gtest/gtest.h>

#include <opencv2/imgproc.hpp>

using made::Corners;

namespace {

const cv::Size frame(640, 480); // that of the small picture

bool isHalf(const cv::Mat& picture, const Corners& corners)
{
    mirvak::SmallLook look;
    mirvak::EdgeField edges;
    edges.build(look.build(picture));
    return mirvak::isHalfOfSpread(look.planes(), edges, corners);
}

bool reaches(const cv::Mat& picture, const Corners& corners)
{
    mirvak::SmallLook look;
    return mirvak::paperReachesBorder(look.build(picture), corners);
}

Corners box(double left, double top, double right, double bottom)
{
    return {{{left, top}, {right, top}, {right, bottom}, {left, bottom}}};
}

/// Two pages beside each other with the shadow of a fold between them, which is `wide` on both sides.
cv::Mat spreadOf(const Corners& left, const Corners& right, int wide = 6)
{
    cv::Mat picture = made::desk(frame, made::Desk::dark);
    for (const Corners& page : {left, right})
        made::lay(picture, made::blankPage({300, 400}), page);
    cv::Mat fold =
        picture(cv::Rect(cv::Point(left[1]) - cv::Point(wide, 0), cv::Point(left[2]) + cv::Point(wide, 0)));
    fold *= 0.7;
    return picture;
}

} // namespace

TEST(QuadCheck, tellsHalfOfASpreadFromAPage)
{
    const Corners left = box(60, 60, 320, 420), right = box(320, 60, 580, 420), whole = box(60, 60, 580, 420);
    const cv::Mat spread = spreadOf(left, right);
    EXPECT_TRUE(isHalf(spread, left));
    EXPECT_TRUE(isHalf(spread, right));
    EXPECT_FALSE(isHalf(spread, whole));

    cv::Mat single = made::desk(frame, made::Desk::dark);
    made::lay(single, made::blankPage({300, 400}), left);
    EXPECT_FALSE(isHalf(single, left)) << "nothing goes on behind it";

    cv::Mat grey = spread.clone();
    grey(cv::Rect(327, 60, 253, 360)) *= 0.6;
    EXPECT_FALSE(isHalf(grey, left)) << "what lies beside it is no such paper";

    cv::Mat below = made::desk(frame, made::Desk::dark);
    made::lay(below, made::blankPage({300, 400}), box(250, 120, 600, 350));
    below(cv::Rect(cv::Point(320, 60), cv::Point(326, 420))) *= 0.7; // the upper sheet's shadow
    made::lay(below, made::blankPage({300, 400}), left);
    EXPECT_FALSE(isHalf(below, left)) << "a smaller sheet under its side";

    const Corners wide = box(60, 60, 320, 200), beside = box(320, 60, 580, 200);
    EXPECT_FALSE(isHalf(spreadOf(wide, beside), wide)) << "no book is bound at its short side";
}

TEST(QuadCheck, findsPaperWhereThePageLeavesThePicture)
{
    cv::Mat picture = made::desk(frame, made::Desk::dark);
    const Corners cut = box(200, 150, 460, 479);
    made::lay(picture, made::blankPage({300, 400}), cut);
    EXPECT_TRUE(reaches(picture, cut));

    const Corners whole = box(200, 150, 460, 420);
    cv::Mat ended = made::desk(frame, made::Desk::dark);
    made::lay(ended, made::blankPage({300, 400}), whole);
    EXPECT_TRUE(reaches(ended, whole)) << "no side lies there";
    EXPECT_FALSE(reaches(ended, cut)) << "the page ends before";
    EXPECT_TRUE(reaches(ended, box(200, 150, 460, 477))) << "nor there";

    const Corners corner = box(0, 0, 300, 250), strip = box(0, 150, 639, 300);
    cv::Mat other = made::desk(frame, made::Desk::dark);
    made::lay(other, made::blankPage({300, 400}), corner);
    EXPECT_TRUE(reaches(other, corner)) << "two sides outside, two to be seen";
    made::lay(other, made::blankPage({300, 400}), strip);
    EXPECT_TRUE(reaches(other, strip));
    other(cv::Rect(0, 275, 640, 25)) *= 0.5;
    EXPECT_FALSE(reaches(other, strip)) << "a single side alone is like the paper at the border";
}
