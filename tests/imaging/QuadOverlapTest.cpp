#include "QuadOverlap.h"

#include <gtest/gtest.h>

#include <opencv2/imgproc.hpp>

#include <cmath>

namespace {

using Quad = std::array<cv::Point2d, 4>;

Quad box(double left, double top, double right, double bottom)
{
    return {{{left, top}, {right, top}, {right, bottom}, {left, bottom}}};
}

double pixelsOf(const Quad& a, const Quad* b = nullptr)
{
    constexpr int shift = 4;
    const auto drawn = [&](const Quad& quad) {
        cv::Mat picture = cv::Mat::zeros(700, 900, CV_8UC1);
        std::vector<cv::Point> corners;
        for (const cv::Point2d& p : quad)
            corners.emplace_back(cvRound(p.x * (1 << shift)), cvRound(p.y * (1 << shift)));
        cv::fillConvexPoly(picture, corners, 255, cv::LINE_8, shift);
        return picture;
    };
    return cv::countNonZero(b ? drawn(a) & drawn(*b) : drawn(a));
}

} // namespace

// Outlines that are weighed against each other share lines, and whole sides.
TEST(QuadOverlap, isExactWhereSidesLieInOneLine)
{
    const Quad sheet = box(100, 50, 300, 150), wider = box(100, 50, 320, 150);
    EXPECT_DOUBLE_EQ(mirvak::areaOf(sheet), 20000);
    EXPECT_DOUBLE_EQ(mirvak::overlapOf(sheet, sheet), 1);
    EXPECT_DOUBLE_EQ(mirvak::overlapOf(sheet, wider), 20000.0 / 22000);
    EXPECT_DOUBLE_EQ(mirvak::overlapOf(wider, sheet), 20000.0 / 22000);
    EXPECT_DOUBLE_EQ(mirvak::sharedArea(sheet, box(300, 50, 500, 150)), 0) << "they only touch";
    EXPECT_DOUBLE_EQ(mirvak::overlapOf(sheet, box(400, 200, 500, 300)), 0);
    EXPECT_DOUBLE_EQ(mirvak::sharedArea(sheet, box(150, 80, 200, 100)), 1000) << "one in the other";
    const Quad tilted{{{12.3, 7.1}, {401.7, 33.9}, {377.2, 290.4}, {-3.8, 255.5}}};
    Quad longer = tilted;
    for (const size_t i : {1, 2})
        longer[i] += 0.1 * (tilted[i] - tilted[3 - i]);
    EXPECT_DOUBLE_EQ(mirvak::overlapOf(tilted, tilted), 1);
    EXPECT_NEAR(mirvak::sharedArea(tilted, longer), mirvak::areaOf(tilted), 1e-6);
    const Quad nothing{};
    EXPECT_EQ(mirvak::overlapOf(nothing, nothing), 0);
}

TEST(QuadOverlap, agreesWithCountedPixels)
{
    cv::RNG random(7);
    for (int i = 0; i < 60; ++i) {
        Quad pair[2];
        for (Quad& quad : pair) {
            const cv::Point2d middle(random.uniform(300.0, 600.0), random.uniform(250.0, 450.0));
            double angle = random.uniform(0.0, 6.28);
            for (cv::Point2d& corner : quad) {
                corner =
                    middle + random.uniform(120.0, 200.0) * cv::Point2d(std::cos(angle), std::sin(angle));
                angle += random.uniform(1.4, 1.7);
            }
        }
        EXPECT_NEAR(mirvak::areaOf(pair[0]), pixelsOf(pair[0]), 900) << i << ": its rim counts as pixels";
        EXPECT_NEAR(mirvak::sharedArea(pair[0], pair[1]), pixelsOf(pair[0], &pair[1]), 900) << i;
        EXPECT_NEAR(mirvak::sharedArea(pair[0], pair[1]), mirvak::sharedArea(pair[1], pair[0]), 1e-6);
    }
}
