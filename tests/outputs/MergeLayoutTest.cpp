#include "MergeLayout.h"

#include <gtest/gtest.h>

namespace {

void expectLayout(const MergeLayout& layout, const QSize& size, const QRect& first, const QRect& second)
{
    EXPECT_EQ(layout.size, size) << layout.size.width() << " x " << layout.size.height();
    EXPECT_EQ(layout.first, first);
    EXPECT_EQ(layout.second, second);
}

} // namespace

TEST(MergeLayout, SideBySideTheSecondPicturesHeightCountsOneAboveTheOtherTheMeanWidth)
{
    expectLayout(
        MergeLayout::upDown({400, 300}, {200, 100}, 20), {300, 395}, {0, 0, 300, 225}, {0, 245, 300, 150});
    // The mean is 75.5: 200 * 75.5 / 101 = 149.5 and 77 * 75.5 / 50 = 116.3.
    expectLayout(MergeLayout::upDown({101, 200}, {50, 77}, 0), {75, 265}, {0, 0, 75, 149}, {0, 149, 75, 116});

    expectLayout(MergeLayout::leftRight({1000, 2000}, {800, 1000}, 20),
                 {1320, 1000},
                 {0, 0, 500, 1000},
                 {520, 0, 800, 1000});
    expectLayout(MergeLayout::leftRight({800, 1000}, {1000, 2000}, 0),
                 {2600, 2000},
                 {0, 0, 1600, 2000},
                 {1600, 0, 1000, 2000});
    // 101 * 77 / 200 = 38.9
    expectLayout(MergeLayout::leftRight({101, 200}, {50, 77}, 3), {91, 77}, {0, 0, 38, 77}, {41, 0, 50, 77});
}

// Products beyond 24 bits are rounded: these differ by one from exact arithmetic. Found by trying sizes of
// cameras in another language's single precision.
TEST(MergeLayout, CountsInSinglePrecision)
{
    EXPECT_EQ(MergeLayout::leftRight({6513, 5536}, {100, 5519}, 0).first.width(), 6493); // 6492.99...
    EXPECT_EQ(MergeLayout::upDown({6238, 6238}, {7672, 100}, 0).first.height(), 6954);   // 6955 exactly
}

TEST(MergeLayout, RefusesWhatCannotBePainted)
{
    EXPECT_TRUE(MergeLayout::leftRight({}, {10, 10}, 5).isEmpty());
    EXPECT_TRUE(MergeLayout::upDown({10, 10}, {0, 10}, 5).isEmpty());
    EXPECT_TRUE(MergeLayout::leftRight({4000, 1}, {3000, 4000}, 0).isEmpty()) << "sixteen million px wide";
    EXPECT_TRUE(MergeLayout::upDown({3, 4000}, {4000, 3}, 0).isEmpty());
    EXPECT_EQ(MergeLayout::leftRight({10, 10}, {10, 10}, -4).size, QSize(20, 10));
    EXPECT_EQ(MergeLayout::upDown({10, 10}, {10, 10}, -4).size, QSize(10, 20));
    EXPECT_FALSE(MergeLayout::upDown({1, 1}, {1, 1}, 200).isEmpty());
}
