#include "PageCheck.h"
#include "MadePages.h"

#include <gtest/gtest.h>

#include <opencv2/imgproc.hpp>

namespace {

constexpr double threshold = 0.32; // as the program asks
const cv::Size sheetSize(1000, 1414);

class PageCheckTest : public ::testing::Test
{
protected:
    static cv::Mat pageOnDesk(const cv::Mat& sheet, double degrees = 2)
    {
        cv::Mat picture = made::desk({1088, 816}, made::Desk::wood);
        made::lay(picture, sheet, made::placed({540, 404}, {500, 700}, degrees), 0.8);
        return picture;
    }
    /// Shows the picture `times` times with fresh noise. @return how often a new page was reported
    int show(const cv::Mat& picture, int times, double brightness = 1)
    {
        int reported = 0;
        for (int i = 0; i < times; ++i) {
            cv::Mat frame = picture * brightness;
            made::shine(frame, {0.8, 1, 3}, ++seed_);
            reported += check_.check(frame, threshold).newPage ? 1 : 0;
        }
        return reported;
    }
    static cv::Mat withHand(const cv::Mat& picture, int x)
    {
        cv::Mat covered = picture.clone();
        cv::ellipse(covered, {x, 500}, {170, 260}, 20, 0, 360, {205, 160, 135}, cv::FILLED);
        return covered;
    }

    mirvak::PageCheck check_;
    unsigned seed_ = 0;
};

TEST_F(PageCheckTest, EachPageIsReportedOnceWhenItLiesStill)
{
    const cv::Mat first = pageOnDesk(made::textPage(sheetSize, 34)),
                  second = pageOnDesk(made::tablePage(sheetSize), -4);
    EXPECT_EQ(show(first, 12), 1);
    for (int x = -100; x < 1100; x += 120) // a hand brings the next page
        EXPECT_EQ(show(withHand(x < 500 ? first : second, x), 1), 0) << x;
    EXPECT_EQ(show(second, 12), 1);
    check_.reset();
    EXPECT_EQ(show(second, 12), 1);
}

TEST_F(PageCheckTest, LightAndAPassingHandAreNoNewPage)
{
    const cv::Mat page = pageOnDesk(made::textPage(sheetSize, 34));
    ASSERT_EQ(show(page, 12), 1);
    for (const double brightness : {0.92, 1.0, 0.85, 0.75, 0.7, 0.9})
        EXPECT_EQ(show(page, 3, brightness), 0) << brightness;
    for (int x = 1100; x > -200; x -= 150)
        EXPECT_EQ(show(withHand(page, x), 1), 0) << x;
    EXPECT_EQ(show(page, 12), 0);
}

} // namespace
