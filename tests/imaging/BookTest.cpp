// Open books made with known truth: two bent pages under a camera above the spine.
#include "MadeBooks.h"
#include "MadePages.h"
#include "TestImage.h"
#include "mirvakcamera.h"

#include "Image.h"

#include <gtest/gtest.h>
#include <opencv2/imgproc.hpp>

#include <cmath>
#include <memory>
#include <numeric>
#include <vector>

namespace {

class BookFlat : public ::testing::Test
{
protected:
    struct Release
    {
        MirvakCamera* camera;
        void operator()(void* image) const { camera->MirvakImage_Release(image); }
    };
    using Handle = std::unique_ptr<void, Release>;

    int flatten(const cv::Mat& photo, int mode, bool takeFingers = false)
    {
        Handle image(makeImageHandle(1, 1), Release{&camera_});
        static_cast<mirvak::Image*>(image.get())->pixels = photo;
        static_cast<mirvak::Image*>(image.get())->dpi = 300;
        void* first = &camera_; // must not be kept by an error
        void* second = &camera_;
        const int result = camera_.MirvakImage_BookFlat(image.get(), takeFingers, mode, first, second);
        left_ = Handle(first, Release{&camera_});
        right_ = Handle(second, Release{&camera_});
        return result;
    }
    const cv::Mat& left() const { return static_cast<mirvak::Image*>(left_.get())->pixels; }
    const cv::Mat& right() const { return static_cast<mirvak::Image*>(right_.get())->pixels; }

    MirvakCamera camera_;
    Handle left_{nullptr, Release{&camera_}}, right_{nullptr, Release{&camera_}};
};

} // namespace

TEST_F(BookFlat, LinesBecomeStraightAndTheGutterWideAndLight)
{
    for (const auto& [degrees, aside] : {std::pair(0.0, cv::Point2d(-130, 0)),
                                         std::pair(7.0, cv::Point2d()),
                                         std::pair(-9.0, cv::Point2d(60, 0))}) {
        SCOPED_TRACE(degrees);
        const cv::Mat photo = made::spread(made::ruledText(1), made::ruledText(2), 110, degrees, aside);
        const cv::Mat before = photo.clone();
        ASSERT_EQ(flatten(photo, 2), MIRVAK_OK);
        EXPECT_EQ(cv::norm(photo, before, cv::NORM_INF), 0);
        ASSERT_TRUE(left_ && right_);
        EXPECT_EQ(static_cast<mirvak::Image*>(right_.get())->dpi, 300);
        for (const cv::Mat* page : {&left(), &right()}) {
            const made::Shape shape = made::shapeOf(*page);
            ASSERT_GT(shape.looks, 150);
            EXPECT_LT(shape.bend,
                      3.0); // the photograph bends them by 20 pixels; half a pixel each is rounding
            EXPECT_LT(shape.uneven, 0.08); // the photograph has half of the distance at the gutter
            EXPECT_NEAR(
                static_cast<double>(page->cols) / page->rows, 1.0 * made::pageWidth / made::pageHeight, 0.05);
            const int inner = page == &left() ? page->cols * 96 / 100 : page->cols * 2 / 100;
            const int outer = page == &left() ? page->cols * 2 / 100 : page->cols * 96 / 100;
            const cv::Rect strip(0, page->rows / 40, page->cols / 50, page->rows / 20);
            const double shade = cv::mean((*page)(strip + cv::Point(inner, 0)))[1],
                         paper = cv::mean((*page)(strip + cv::Point(outer, 0)))[1];
            EXPECT_GT(shade, 0.9 * paper); // 0.6 of it in the photograph
            EXPECT_NEAR(paper, 246, 4) << "white, and warm as it was";
        }
    }
}

TEST_F(BookFlat, OnePictureHasBothPagesSideBySide)
{
    ASSERT_EQ(flatten(made::spread(made::ruledText(3), made::ruledText(4), 90), 2), MIRVAK_OK);
    const cv::Size one = left().size(), other = right().size();
    ASSERT_EQ(flatten(made::spread(made::ruledText(3), made::ruledText(4), 90), 1), MIRVAK_OK);
    EXPECT_FALSE(right_);
    EXPECT_NEAR(static_cast<double>(left().cols) / left().rows,
                static_cast<double>(one.width + other.width) / std::max(one.height, other.height),
                0.08);
}

TEST_F(BookFlat, FingersGoWhenAskedAndPrintStays)
{
    cv::Mat photo = made::spread(made::ruledText(5), made::ruledText(6), 80);
    const cv::Point tip(made::bookFrame.width / 2 + 545, 640);
    made::finger(photo, tip, tip + cv::Point(300, 20));
    const auto skinIn = [](const cv::Mat& page) {
        int count = 0;
        const cv::Mat margin = page.colRange(page.cols * 90 / 100, page.cols);
        for (int y = 0; y < margin.rows; ++y)
            for (int x = 0; x < margin.cols; ++x) {
                const cv::Vec3b& c = margin.at<cv::Vec3b>(y, x);
                count += c[0] > c[2] + 30 && c[1] > 90 && c[1] < c[0] - 20;
            }
        return count;
    };
    const auto print = [](const cv::Mat& page) {
        cv::Mat green;
        cv::extractChannel(page.colRange(page.cols / 10, page.cols * 87 / 100), green, 1);
        return cv::countNonZero(green < 120);
    };
    ASSERT_EQ(flatten(photo, 2, false), MIRVAK_OK);
    const int kept = skinIn(right()), printed = print(right());
    ASSERT_EQ(flatten(photo, 2, true), MIRVAK_OK);
    EXPECT_GT(kept, 1000);
    EXPECT_LT(skinIn(right()), kept * 15 / 100);
    EXPECT_GT(print(right()), printed * 98 / 100);
}

TEST_F(BookFlat, AFlatSheetStaysFlat)
{
    for (const bool isFolded : {false, true}) {
        cv::Mat sheet = made::ruled(made::textPage({700, 940}, 34, 7));
        for (int x = 300; isFolded && x < 400; ++x) // print goes over it, as over no spine
            sheet.col(x) *= 1 - 0.3 * std::exp(-std::abs(x - 350) / 12.0);
        cv::Mat photo = made::desk(made::bookFrame, made::Desk::dark);
        made::lay(photo, sheet, made::placed({800, 590}, {700, 940}, 2));
        made::shine(photo, {});
        ASSERT_EQ(flatten(photo, 2), MIRVAK_OK);
        EXPECT_FALSE(right_); // one page
        EXPECT_NEAR(left().cols, 700, 4);
        EXPECT_NEAR(left().rows, 940, 4);
        for (int k = 0; k < made::rules; ++k) {
            const std::vector<double> at = made::crossings(left(), left().cols / 2 + 11, false);
            ASSERT_EQ(at.size(), static_cast<size_t>(made::rules));
            EXPECT_NEAR(
                at[static_cast<size_t>(k)], made::ruleAt(k, 940), 2.5); // 3 pixels in a picture of 3264
        }
    }
}

TEST_F(BookFlat, PagesWithoutLinesOfPrintKeepTheirShape)
{
    const cv::Size size(made::pageWidth, made::pageHeight);
    const cv::Mat blank = made::blankPage(size), table = made::tablePage(size);
    cv::Mat picture = blank.clone();
    cv::randu(picture(cv::Rect(80, 90, 460, 640)), 20, 200);
    for (const auto& [left, right] :
         {std::pair(blank, blank), std::pair(table, blank), std::pair(picture, table)}) {
        ASSERT_EQ(flatten(made::spread(left, right, 60), 2), MIRVAK_OK);
        ASSERT_TRUE(left_ && right_);
        const cv::Size one = this->left().size(), other = this->right().size();
        EXPECT_NEAR(one.width, other.width, 12) << "pages of a book are of one size";
        const double aspect =
            static_cast<double>(one.width + other.width) / std::max(one.height, other.height);
        EXPECT_NEAR(aspect, 1.44, 0.06);
        const auto endOf = [](const cv::Mat& page, int percent) {
            return cv::mean(page.colRange(page.cols * percent / 100, page.cols * (percent + 2) / 100))[1];
        };
        EXPECT_GT(endOf(this->left(), 3), 200) << "nothing of the desk";
        EXPECT_GT(endOf(this->right(), 95), 200);
    }
}

TEST_F(BookFlat, WithoutABookThereIsNoPage)
{
    const cv::Mat black(made::bookFrame, CV_8UC3, cv::Scalar::all(0));
    for (const cv::Mat& photo : {black,
                                 cv::Mat(1, 1, CV_8UC3, cv::Scalar::all(255)),
                                 cv::Mat(1, 4000, CV_8UC3, cv::Scalar::all(200)),
                                 made::desk(made::bookFrame, made::Desk::wood)}) {
        SCOPED_TRACE(photo.cols);
        for (const int mode : {1, 2}) {
            EXPECT_EQ(flatten(photo, mode, true), MIRVAK_NOT_FOUND);
            EXPECT_FALSE(left_ || right_);
        }
    }
    EXPECT_EQ(flatten(black, 3), MIRVAK_BAD_ARGUMENT);
    EXPECT_FALSE(left_ || right_);
    void *left = &camera_, *right = &camera_;
    EXPECT_EQ(camera_.MirvakImage_BookFlat(nullptr, false, 1, left, right), MIRVAK_BAD_HANDLE);
    EXPECT_FALSE(left || right);
}
