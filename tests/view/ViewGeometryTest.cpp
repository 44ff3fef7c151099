#include "ViewGeometry.h"

#include <gtest/gtest.h>

#include <ostream>

// Readable failures.
void PrintTo(const QRect& r, std::ostream* out)
{
    *out << r.x() << "," << r.y() << " " << r.width() << "x" << r.height();
}

namespace {

ViewGeometry geometry(const QSize& view, const QSize& source)
{
    ViewGeometry g;
    g.setViewSize(view);
    g.setSourceSize(source);
    return g;
}

TEST(ViewGeometry, FitsTheWholePictureIntoTheMiddleOrCoversTheView)
{
    EXPECT_EQ(geometry({1000, 600}, {1600, 1200}).displayed(), QRect(100, 0, 800, 600));
    EXPECT_EQ(geometry({1000, 600}, {1200, 1600}).displayed(), QRect(275, 0, 450, 600)); // turned
    EXPECT_EQ(geometry({600, 1000}, {1600, 1200}).displayed(), QRect(0, 275, 600, 450));
    EXPECT_EQ(geometry({640, 480}, {64, 48}).displayed(), QRect(0, 0, 640, 480)); // small ones grow
    EXPECT_EQ(geometry({300, 2}, {10000, 10}).displayed().size(), QSize(300, 1)); // never vanishes

    ViewGeometry g = geometry({1000, 600}, {1600, 1200});
    g.setExpanding(true);
    EXPECT_EQ(g.displayed(), QRect(0, -75, 1000, 750));
    EXPECT_EQ(g.visible(), QRect(0, 0, 1000, 600));
    g.setExpanding(false);
    EXPECT_EQ(g.displayed(), QRect(100, 0, 800, 600));
}

TEST(ViewGeometry, HasNothingToShowWithoutAPictureOrRoom)
{
    for (ViewGeometry g : {geometry({1000, 600}, {}), geometry({0, 600}, {1600, 1200})}) {
        g.zoomBy(3);
        g.panBy({10, 10});
        EXPECT_TRUE(g.displayed().isNull());
        EXPECT_TRUE(g.visible().isEmpty());
        EXPECT_TRUE(g.toSource({0, 0, 100, 100}).isNull());
    }
}

TEST(ViewGeometry, ZoomsInTenthsWithoutDriftBetweenItsLimits)
{
    ViewGeometry g = geometry({1000, 600}, {1600, 1200});
    for (int step = 0; step < 11; ++step)
        g.zoomBy(-1);
    EXPECT_EQ(g.zoom(), 0.1);
    EXPECT_EQ(g.displayed(), QRect(460, 270, 80, 60));
    for (int step = 0; step < 9; ++step)
        g.zoomBy(1);
    EXPECT_EQ(g.zoom(), 1.0);
    EXPECT_EQ(g.displayed(), QRect(100, 0, 800, 600));
    g.zoomBy(50);
    EXPECT_EQ(g.zoom(), 2.0);
    EXPECT_EQ(g.displayed(), QRect(-300, -300, 1600, 1200));
}

TEST(ViewGeometry, PansWithAQuarterInReachAndForgetsItWithTheDisplayedSize)
{
    ViewGeometry g = geometry({1000, 600}, {1600, 1200});
    g.zoomBy(10);
    g.panBy({-40, 25});
    EXPECT_EQ(g.displayed(), QRect(-340, -275, 1600, 1200));
    g.setSourceSize({3200, 2400}); // another resolution of the same shape: the same place
    EXPECT_EQ(g.displayed(), QRect(-340, -275, 1600, 1200));
    g.zoomBy(-1);
    EXPECT_EQ(g.pan(), QPoint());
    g.fit();
    g.panBy({5, 5}); // the fitted size stays
    g.fit();
    EXPECT_EQ(g.displayed(), QRect(100, 0, 800, 600));

    g.panBy({100000, -100000});
    EXPECT_EQ(g.visible(), QRect(800, 0, 200, 150)); // a quarter of 800 and of 600
    g.panBy({-1, 1});                                // and comes back at once
    EXPECT_EQ(g.visible(), QRect(799, 0, 201, 151));
    g.panBy({-100000, 0});
    EXPECT_EQ(g.visible().width(), 200);
    g.zoomBy(10);
    g.panBy({-100000, 100000});
    EXPECT_EQ(g.visible(), QRect(0, 450, 250, 150)); // larger than the view: a quarter of the view
}

TEST(ViewGeometry, FindsTheSourcePixelsOfARectangle)
{
    ViewGeometry g = geometry({1000, 600}, {1600, 1200}); // shown at 100,0 by half
    EXPECT_EQ(g.toSource({200, 100, 50, 60}), QRect(200, 200, 100, 120));
    EXPECT_EQ(g.toSource({-50, -50, 2000, 2000}), QRect(0, 0, 1600, 1200));
    EXPECT_EQ(g.toSource({0, 0, 100, 600}), QRect()); // beside the picture
    EXPECT_EQ(g.toSource({90, 10, 20, 10}), QRect(0, 20, 20, 20));
    g.zoomBy(10); // pixel for pixel, moved by 300,300
    EXPECT_EQ(g.toSource({0, 0, 10, 10}), QRect(300, 300, 10, 10));

    const ViewGeometry odd = geometry({300, 300}, {400, 400}); // 4/3 source pixels a view pixel
    EXPECT_EQ(odd.toSource({1, 2, 2, 4}), QRect(1, 3, 3, 5));  // 1.33 2.67 2.67 5.33
    EXPECT_EQ(odd.toSource({299, 299, 1, 1}), QRect(399, 399, 1, 1));
    const ViewGeometry enlarged = geometry({300, 300}, {100, 100});
    // 299 / 3 rounds to 100, one beyond the last pixel: nothing is left of it.
    EXPECT_TRUE(enlarged.toSource({299, 299, 1, 1}).isNull());
    EXPECT_EQ(enlarged.toSource({290, 290, 10, 10}), QRect(97, 97, 3, 3));
    // 0.5 and 99.5 both round up, and would reach beyond the picture together.
    EXPECT_EQ(geometry({200, 200}, {100, 100}).toSource({1, 1, 199, 199}), QRect(1, 1, 99, 99));
}

} // namespace
