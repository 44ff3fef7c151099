// Fingers that hold a page down, and what is printed like them.
#include "Fingers.h"

#include "MadePages.h"

#include <gtest/gtest.h>

#include <opencv2/imgproc.hpp>

TEST(Fingers, AreTakenOutAndTintedBoxesAtThePagesEndAreNot)
{
    cv::Mat page(800, 600, CV_8UC3, cv::Scalar(240, 238, 230));
    const cv::Rect flat(480, 100, 120, 90), lettered(0, 300, 160, 110), red(450, 500, 150, 80);
    page(flat).setTo(cv::Scalar(228, 182, 150));
    page(red).setTo(cv::Scalar(230, 90, 100));
    page(lettered).setTo(cv::Scalar(228, 182, 150));
    for (int x = 0; x < lettered.width; ++x) // uneven as skin is, but for the letters
        page(cv::Rect(x, lettered.y, 1, lettered.height)) *= 0.85 + 0.15 * x / lettered.width;
    for (int line = 0; line < 4; ++line)
        cv::putText(
            page, "letters in it", {6, 325 + 25 * line}, cv::FONT_HERSHEY_SIMPLEX, 0.7, {30, 30, 30}, 2);
    const cv::Rect pink(470, 640, 130, 90), band(0, 440, 60, 350);
    for (const auto& [box, colour] :
         {std::pair(pink, cv::Scalar(232, 164, 168)), std::pair(band, cv::Scalar(205, 148, 112))})
        for (int y = 0; y < box.height; ++y) // uneven too
            page(cv::Rect(box.x, box.y + y, box.width, 1)).setTo(colour * (0.75 + 0.25 * y / box.height));
    const cv::Mat before = page.clone();
    made::finger(page, {250, 720}, {250, 860});
    mirvak::removeFingers(page, {});
    for (const cv::Rect& box : {flat, lettered, red, pink, band})
        EXPECT_EQ(cv::norm(page(box), before(box), cv::NORM_INF), 0) << box;
    const cv::Rect under(222, 695, 56, 105);
    EXPECT_LT(cv::norm(page(under), before(under), cv::NORM_L1) / (3 * under.area()), 6);
}

TEST(Fingers, ComeInOverTheOpenEndsAlone)
{
    const cv::Size size(601, 803); // a pixel more than the reduced page has
    const cv::Point middle(size.width / 2, size.height / 2);
    const cv::Point outwards[] = {{-1, 0}, {0, -1}, {1, 0}, {0, 1}};
    for (int end = 0; end < 4; ++end) {
        const cv::Point& out = outwards[end];
        const cv::Point hand = middle + cv::Point(out.x * (middle.x + 60), out.y * (middle.y + 60));
        cv::Mat page(size, CV_8UC3, cv::Scalar(240, 238, 230));
        made::finger(page, hand - out * 160, hand);
        const cv::Mat before = page.clone();
        mirvak::removeFingers(page, {end != 0, end != 1, end != 2, end != 3});
        EXPECT_EQ(cv::norm(page, before, cv::NORM_INF), 0) << "this end is closed: " << end;
        mirvak::removeFingers(page, {end == 0, end == 1, end == 2, end == 3});
        EXPECT_LT(cv::norm(page, cv::Mat(size, CV_8UC3, cv::Scalar(240, 238, 230)), cv::NORM_INF), 16) << end;
    }
    cv::Mat page(size, CV_8UC3, cv::Scalar(240, 238, 230));
    made::finger(page, middle, middle + cv::Point(0, 60)); // printed: it touches no end
    const cv::Mat before = page.clone();
    mirvak::removeFingers(page, {});
    EXPECT_EQ(cv::norm(page, before, cv::NORM_INF), 0);
}
