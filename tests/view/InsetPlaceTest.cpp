#include "InsetPlace.h"

#include <gtest/gtest.h>

namespace {

const QRect mainPicture(40, 10, 801, 601);

} // namespace

TEST(InsetPlace, TakesTheFourCorners)
{
    const QSize inset(201, 151); // its halves are 100 and 75
    const QPoint expected[] = {{40, 10}, {40, 10 + 601 - 75}, {40 + 801 - 100 + 50, 10}, {791, 536}};
    for (int corner = 0; corner < 4; ++corner)
        EXPECT_EQ(insetPlace::position(corner, mainPicture, inset), expected[corner]) << corner;
    for (const int other : {-1, 4, 1000})
        EXPECT_EQ(insetPlace::position(other, mainPicture, inset), expected[0]) << other;
}

TEST(InsetPlace, IsAThirdOfThePictureInTheCamerasShape)
{
    EXPECT_EQ(insetPlace::size(QRect(9, 9, 900, 600), QSize(1600, 1200)), QSize(266, 200));
    EXPECT_EQ(insetPlace::size(QRect(0, 0, 900, 600), QSize(1920, 1080)), QSize(300, 168));
    EXPECT_EQ(insetPlace::size(QRect(0, 0, 900, 600), QSize(480, 640)), QSize(150, 200));
    EXPECT_EQ(insetPlace::size(QRect(0, 0, 900, 600), QSize()), QSize(266, 200)) << "no frame yet";
    EXPECT_EQ(insetPlace::size(QRect(), QSize(64, 48)), QSize(1, 1));
}

TEST(InsetPlace, ADragStaysOnThePictureAndNeverJumps)
{
    const QSize inset(200, 150);
    const auto to = [&](const QPoint& wanted, const QPoint& start) {
        return insetPlace::dragged(wanted, start, inset, mainPicture);
    };
    EXPECT_EQ(to({300, 200}, {40, 10}), QPoint(300, 200));
    EXPECT_EQ(to({-500, -500}, {300, 200}), QPoint(40, 10));
    EXPECT_EQ(to({5000, 5000}, {300, 200}), QPoint(40 + 801 - 200, 10 + 601 - 150));
    const QPoint beyond(791, 536); // half outside, where the fourth corner begins
    EXPECT_EQ(to(beyond, beyond), beyond);
    EXPECT_EQ(to({786, 530}, beyond), QPoint(786, 530)) << "it comes in step by step";
    EXPECT_EQ(to({900, 900}, beyond), beyond) << "but never farther out";
    EXPECT_EQ(insetPlace::dragged({7, 7}, {5, 5}, {900, 900}, {0, 0, 100, 100}), QPoint(5, 5))
        << "larger than all";
    EXPECT_EQ(insetPlace::carried({60, 40}, QRect(), {0, 0, 200, 160}), QPoint(60, 40)) << "from nowhere";
    EXPECT_EQ(insetPlace::carried({60, 40}, {20, 10, 100, 100}, {5, 5, 300, 200}), QPoint(125, 65));
}
