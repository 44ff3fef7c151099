// Open books made with known truth: two bent pages under a camera above the spine.
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

constexpr int pageWidth = 620, pageHeight = 860; // pixels of a flat page
const cv::Size frame(1600, 1180);
constexpr int rules = 5; // red ones across and along a page, at even distances

int ruleAt(int k, int length)
{
    return length * (k + 1) / (rules + 1);
}

// Text for the algorithm, red rules for the test: letters alone are looked at.
cv::Mat ruled(cv::Mat page)
{
    const cv::Scalar red(225, 60, 60);
    for (int k = 0; k < rules; ++k) {
        cv::line(page, {0, ruleAt(k, page.rows)}, {page.cols, ruleAt(k, page.rows)}, red, 3);
        cv::line(page, {ruleAt(k, page.cols), 0}, {ruleAt(k, page.cols), page.rows}, red, 3);
    }
    return page;
}

cv::Mat textPage(unsigned seed)
{
    return ruled(made::textPage({pageWidth, pageHeight}, 30, seed));
}

// Height of the paper over the spine, pixels of the flat page.
double heightAt(double across, double bulge)
{
    return bulge * (1 - std::exp(-across / 60)) * (1 - 0.25 * across / pageWidth);
}

// Both pages as a camera 2000 above the spine sees them, darker towards the gutter.
cv::Mat spread(const cv::Mat& left, const cv::Mat& right, double bulge, double degrees = 0, double aside = 0)
{
    constexpr double eye = 2000;
    struct Column
    {
        float s, scale, light;
    };
    std::vector<Column> columns(frame.width, {-1, 1, 1});
    double s = 0;
    for (double x = 0; s < pageWidth; x += 0.05) {
        const double h = heightAt(x, bulge), rise = heightAt(x + 0.05, bulge) - h;
        const int px = static_cast<int>(x * eye / (eye - h));
        if (px < frame.width)
            columns[static_cast<size_t>(px)] = {static_cast<float>(s),
                                                static_cast<float>((eye - h) / eye),
                                                static_cast<float>(1 - 0.45 * std::exp(-x / 30))};
        s += std::hypot(0.05, rise);
    }
    cv::Mat photo = made::desk(frame, made::Desk::dark);
    for (int y = 0; y < frame.height; ++y) {
        for (int x = 0; x < frame.width; ++x) {
            const bool isRight = x >= frame.width / 2;
            const Column& column =
                columns[static_cast<size_t>(isRight ? x - frame.width / 2 : frame.width / 2 - 1 - x)];
            const double v = pageHeight / 2.0 + (y - frame.height / 2.0) * column.scale;
            if (column.s < 0 || v < 0 || v >= pageHeight - 1)
                continue;
            const cv::Mat& page = isRight ? right : left;
            cv::Mat pixel;
            const float at = isRight ? column.s : pageWidth - 1 - column.s;
            cv::getRectSubPix(page, {1, 1}, {at, static_cast<float>(v)}, pixel);
            photo.at<cv::Vec3b>(y, x) = pixel.at<cv::Vec3b>(0, 0) * (0.9 * static_cast<double>(column.light));
        }
    }
    const cv::Point2f middle(frame.width / 2.0F, frame.height / 2.0F);
    cv::Mat turned = cv::getRotationMatrix2D(middle, -degrees, 1);
    turned.at<double>(0, 2) += aside;
    cv::warpAffine(photo.clone(), photo, turned, frame, cv::INTER_LINEAR, cv::BORDER_REPLICATE);
    made::shine(photo, {});
    return photo;
}

bool isRed(const cv::Vec3b& c)
{
    return c[0] > c[1] + 45 && c[0] > c[2] + 45;
}

// Places of the red rules that cross one row (or column) of a picture.
std::vector<double> crossings(const cv::Mat& rgb, int at, bool alongRow)
{
    std::vector<double> found;
    const int length = alongRow ? rgb.cols : rgb.rows;
    double sum = 0;
    int count = 0;
    for (int i = 0; i <= length; ++i) {
        if (i < length && isRed(alongRow ? rgb.at<cv::Vec3b>(at, i) : rgb.at<cv::Vec3b>(i, at))) {
            sum += i;
            ++count;
        } else if (count > 0) {
            if (count < 12) // else it runs along a rule
                found.push_back(sum / count);
            sum = count = 0;
        }
    }
    return found;
}

struct Shape
{
    double bend = 0;   ///< pixels: greatest deviation of a rule across the page from straight and level
    double uneven = 0; ///< greatest difference of the distances of rules along the page, share of their mean
    int looks = 0;
};

Shape shapeOf(const cv::Mat& page)
{
    Shape shape;
    std::vector<std::vector<double>> levels(rules);
    for (int x = page.cols / 12; x < page.cols * 11 / 12; x += 9) {
        const std::vector<double> at = crossings(page, x, false);
        for (size_t k = 0; at.size() == rules && k < rules; ++k)
            levels[k].push_back(at[k]);
    }
    for (const std::vector<double>& level : levels) {
        shape.looks += static_cast<int>(level.size());
        if (!level.empty())
            shape.bend = std::max(shape.bend,
                                  *std::max_element(level.begin(), level.end()) -
                                      *std::min_element(level.begin(), level.end()));
    }
    for (int y = page.rows / 12; y < page.rows * 11 / 12; y += 9) {
        const std::vector<double> at = crossings(page, y, true);
        for (size_t k = 2; at.size() == rules && k < rules; ++k) {
            const double mean = (at.back() - at.front()) / (rules - 1);
            shape.uneven = std::max(shape.uneven, std::abs(at[k] - at[k - 1] - mean) / mean);
        }
    }
    return shape;
}

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
    for (const auto& [degrees, aside] : {std::pair(0.0, -130), std::pair(7.0, 0), std::pair(-9.0, 60)}) {
        SCOPED_TRACE(degrees);
        const cv::Mat photo = spread(textPage(1), textPage(2), 110, degrees, aside);
        const cv::Mat before = photo.clone();
        ASSERT_EQ(flatten(photo, 2), MIRVAK_OK);
        EXPECT_EQ(cv::norm(photo, before, cv::NORM_INF), 0);
        ASSERT_TRUE(left_ && right_);
        EXPECT_EQ(static_cast<mirvak::Image*>(right_.get())->dpi, 300);
        for (const cv::Mat* page : {&left(), &right()}) {
            const Shape shape = shapeOf(*page);
            ASSERT_GT(shape.looks, 150);
            EXPECT_LT(shape.bend,
                      3.0); // the photograph bends them by 20 pixels; half a pixel each is rounding
            EXPECT_LT(shape.uneven, 0.08); // the photograph has half of the distance at the gutter
            EXPECT_NEAR(static_cast<double>(page->cols) / page->rows, 1.0 * pageWidth / pageHeight, 0.05);
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
    ASSERT_EQ(flatten(spread(textPage(3), textPage(4), 90), 2), MIRVAK_OK);
    const cv::Size one = left().size(), other = right().size();
    ASSERT_EQ(flatten(spread(textPage(3), textPage(4), 90), 1), MIRVAK_OK);
    EXPECT_FALSE(right_);
    EXPECT_NEAR(static_cast<double>(left().cols) / left().rows,
                static_cast<double>(one.width + other.width) / std::max(one.height, other.height),
                0.08);
}

TEST_F(BookFlat, FingersGoWhenAskedAndPrintStays)
{
    cv::Mat photo = spread(textPage(5), textPage(6), 80);
    const cv::Point tip(frame.width / 2 + 545, 640);
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
        cv::Mat sheet = ruled(made::textPage({700, 940}, 34, 7));
        for (int x = 300; isFolded && x < 400; ++x) // print goes over it, as over no spine
            sheet.col(x) *= 1 - 0.3 * std::exp(-std::abs(x - 350) / 12.0);
        cv::Mat photo = made::desk(frame, made::Desk::dark);
        made::lay(photo, sheet, made::placed({800, 590}, {700, 940}, 2));
        made::shine(photo, {});
        ASSERT_EQ(flatten(photo, 2), MIRVAK_OK);
        EXPECT_FALSE(right_); // one page
        EXPECT_NEAR(left().cols, 700, 4);
        EXPECT_NEAR(left().rows, 940, 4);
        for (int k = 0; k < rules; ++k) {
            const std::vector<double> at = crossings(left(), left().cols / 2 + 11, false);
            ASSERT_EQ(at.size(), static_cast<size_t>(rules));
            EXPECT_NEAR(at[static_cast<size_t>(k)], ruleAt(k, 940), 2.5); // 3 pixels in a picture of 3264
        }
    }
}

TEST_F(BookFlat, PagesWithoutLinesOfPrintKeepTheirShape)
{
    const cv::Size size(pageWidth, pageHeight);
    const cv::Mat blank = made::blankPage(size), table = made::tablePage(size);
    cv::Mat picture = blank.clone();
    cv::randu(picture(cv::Rect(80, 90, 460, 640)), 20, 200);
    for (const auto& [left, right] :
         {std::pair(blank, blank), std::pair(table, blank), std::pair(picture, table)}) {
        ASSERT_EQ(flatten(spread(left, right, 60), 2), MIRVAK_OK);
        ASSERT_TRUE(left_ && right_);
        const cv::Size one = this->left().size(), other = this->right().size();
        EXPECT_NEAR(one.width, other.width, 12) << "pages of a book are of one size";
        const double aspect =
            static_cast<double>(one.width + other.width) / std::max(one.height, other.height);
        EXPECT_GT(aspect, 1.2); // 1.44 for the two pages
        EXPECT_LT(aspect, 1.8);
    }
}

TEST_F(BookFlat, WithoutABookThereIsNoPage)
{
    const cv::Mat black(frame, CV_8UC3, cv::Scalar::all(0));
    for (const cv::Mat& photo : {black,
                                 cv::Mat(1, 1, CV_8UC3, cv::Scalar::all(255)),
                                 cv::Mat(1, 4000, CV_8UC3, cv::Scalar::all(200)),
                                 made::desk(frame, made::Desk::wood)}) {
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
