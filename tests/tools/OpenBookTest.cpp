// The made books' truth: where a page's point is said to be, there the picture shows it.
#include "books/OpenBook.h"

#include <opencv2/imgproc.hpp>

#include <gtest/gtest.h>

using namespace deskpictures;

namespace {

constexpr double pxPerMm = 6; // of the pages

QImage page(cv::Size2d mm, QRgb colour)
{
    QImage image(int(mm.width * pxPerMm), int(mm.height * pxPerMm), QImage::Format_RGBA8888_Premultiplied);
    image.fill(colour);
    return image;
}

void dot(QImage& image, cv::Point2d mm)
{
    for (int y = -7; y < 7; ++y)
        for (int x = -7; x < 7; ++x)
            image.setPixel(int(mm.x * pxPerMm) + x, int(mm.y * pxPerMm) + y, qRgb(0, 0, 255));
}

/// The middle of what is blue near a place; far away when there is nothing.
cv::Point2d blueNear(const Layer& layer, cv::Point2d place)
{
    constexpr int reach = 14;
    cv::Point2d sum;
    double weight = 0;
    for (int y = int(place.y) - reach; y <= place.y + reach; ++y)
        for (int x = int(place.x) - reach; x <= place.x + reach; ++x) {
            const cv::Vec4b& pixel = layer.colours.at<cv::Vec4b>(y, x);
            const double blue = pixel[2] > pixel[0] ? pixel[2] - pixel[0] : 0;
            weight += blue;
            sum += blue * cv::Point2d(x, y);
        }
    return weight > 1000 ? sum / weight : cv::Point2d(-1, -1);
}

BookForm thickAndThin()
{
    BookForm form;
    form.left = {18, 24, 16, 0, 0};
    form.right = {6, 34, 2, 4, 110};
    return form;
}

View obliqueView(const OpenBook& book)
{
    Pose pose;
    pose.turnDegrees = 9;
    pose.tiltDegrees = 7;
    pose.fromDegrees = 40;
    pose.fill = 0.8;
    return View(pose, book.openMm(), {972, 729});
}

} // namespace

TEST(OpenBookTest, PointsOfThePagesAreWhereTheGridSays)
{
    const OpenBook book(thickAndThin(), {});
    const View view = obliqueView(book);
    const std::vector<cv::Point2d> points = {{12, 15}, {30, 190}, {74, 105}, {120, 30}, {134, 200}};
    QImage left = page(book.pageMm(), qRgb(250, 250, 250));
    QImage right = left;
    for (const cv::Point2d& point : points) {
        dot(left, point);
        dot(right, point);
    }
    const Layer layer = book.see(view, left, right);
    for (const bool isRight : {false, true})
        for (const cv::Point2d& point : points) {
            const cv::Point2d said = book.toPicture(view, isRight, point);
            // A dot of 2 mm is foreshortened a little more on the side that falls away.
            EXPECT_LT(cv::norm(blueNear(layer, said) - said), 0.8) << isRight << ' ' << point;
        }
}

TEST(OpenBookTest, TheGutterIsDarkAndTheLampsSideIsBright)
{
    const BookForm form;
    const OpenBook fromLeft(form, {-0.6, 0.4});
    const OpenBook fromRight(form, {0.6, 0.4});
    const View view = obliqueView(fromLeft);
    const QImage white = page(form.pageMm, qRgb(255, 255, 255));
    const cv::Mat left = fromLeft.see(view, white, white).light;
    const cv::Mat right = fromRight.see(view, white, white).light;
    const auto at = [&](const cv::Mat& light, bool isRight, double x) {
        return light.at<float>(cv::Point(fromLeft.toPicture(view, isRight, {x, 100})));
    };
    const double width = form.pageMm.width;
    EXPECT_LT(at(left, false, width - 3), 0.8 * at(left, false, 40)) << "the valley";
    // The left page falls away from its crest to the left: the lamp there lights it more than one at the
    // right.
    EXPECT_GT(at(left, false, 60), at(right, false, 60));
    EXPECT_GT(at(right, true, width - 60), at(left, true, width - 60));
}
