#include "Geometry.h"
#include "ImagePool.h"
#include "Pixels.h"
#include "Rotate.h"

#include <gtest/gtest.h>

#include <limits>
#include <set>

using mirvak::Image;

namespace {

Image randomImage(int width, int height)
{
    Image image;
    image.pixels.create(height, width, CV_8UC3);
    cv::RNG(static_cast<uint64_t>(width) * 1000 + static_cast<uint64_t>(height))
        .fill(image.pixels, cv::RNG::UNIFORM, 0, 256);
    return image;
}

bool same(const cv::Mat& a, const cv::Mat& b)
{
    return difference(a, b) == 0;
}

int darkPixels(const cv::Mat& rgb)
{
    cv::Mat plane;
    cv::extractChannel(rgb, plane, 0);
    return cv::countNonZero(plane < 128);
}

} // namespace

TEST(Rotate, quarterTurnsAreExactAtEverySize)
{
    // Smaller and larger than the tiles, with every remainder of the four pixels that are moved at once.
    for (const cv::Size size :
         {cv::Size(1, 1), {1, 9}, {5, 3}, {64, 64}, {65, 130}, {131, 67}, {200, 66}, {63, 127}}) {
        const Image before = randomImage(size.width, size.height);
        for (int turns = -3; turns <= 4; ++turns) {
            Image image;
            image.pixels = before.pixels.clone();
            mirvak::rotate(image, 90.0 * turns);
            cv::Mat wanted = before.pixels.clone(), transposed;
            for (int turn = 0; turn < (turns + 4) % 4; ++turn) { // a quarter clockwise: transpose and mirror
                cv::transpose(wanted, transposed);
                cv::flip(transposed, wanted, 1);
            }
            EXPECT_TRUE(same(image.pixels, wanted)) << size << " turned " << turns;
            mirvak::rotate(image, -90.0 * turns);
            EXPECT_TRUE(same(image.pixels, before.pixels));
        }
    }
}

TEST(Rotate, aStreamOfTurnsUsesTwoBuffers)
{
    Image image = randomImage(120, 80);
    std::set<const void*> buffers{image.pixels.data};
    for (int i = 0; i < 6; ++i) {
        mirvak::rotate(image, i % 2 ? 270 : 90);
        buffers.insert(image.pixels.data);
    }
    EXPECT_EQ(buffers.size(), 2U);
}

TEST(ImagePool, knowsNothingOfThePictureBefore)
{
    mirvak::ImagePool pool;
    auto image = pool.take(80, 60);
    const void* const buffer = image->pixels.data;
    image->dpi = 100;
    image->taken = std::chrono::steady_clock::now();
    cv::Mat shown = image->pixels;
    pool.giveBack(std::move(image));
    image = pool.take(80, 60);
    EXPECT_NE(image->pixels.data, buffer) << "somebody still shows it";
    image->dpi = 100;
    image->taken = std::chrono::steady_clock::now();
    pool.giveBack(std::move(image));
    image = pool.take(80, 60);
    EXPECT_DOUBLE_EQ(image->dpi, mirvak::cameraDpi);
    EXPECT_FALSE(image->taken);
}

TEST(Rotate, otherAnglesTurnClockwiseAndCutNothingOff)
{
    Image image;
    image.pixels.create(200, 300, CV_8UC3);
    image.pixels.setTo(cv::Scalar::all(255));
    image.pixels(cv::Rect(0, 0, 300, 6)).setTo(cv::Scalar::all(0)); // marks at every border
    image.pixels(cv::Rect(0, 194, 300, 6)).setTo(cv::Scalar::all(0));
    image.pixels(cv::Rect(280, 80, 20, 40)).setTo(cv::Scalar(0, 0, 255));
    const int marked = darkPixels(image.pixels);
    mirvak::rotate(image, 30);
    // 300 cos 30 + 200 sin 30 and 300 sin 30 + 200 cos 30, rounded up.
    EXPECT_EQ(image.pixels.size(), cv::Size(360, 324));
    EXPECT_NEAR(darkPixels(image.pixels), marked, 0.02 * marked);
    // The blue mark at the right middle moves down: (140, 0) from the centre becomes (121, 70).
    const cv::Vec3b blue = image.pixels.at<cv::Vec3b>(162 + 70, 180 + 121);
    EXPECT_GT(blue[2], 240);
    EXPECT_LT(blue[0], 15);
    EXPECT_EQ(image.pixels.at<cv::Vec3b>(0, 0), cv::Vec3b(255, 255, 255));
}

TEST(Geometry, cropClipsToThePicture)
{
    const int most = std::numeric_limits<int>::max();
    const Image whole = randomImage(50, 40);
    const auto cut = [&](int left, int top, int width, int height) {
        Image image;
        image.pixels = whole.pixels.clone();
        const bool done = mirvak::crop(image, left, top, width, height);
        EXPECT_TRUE(done || same(image.pixels, whole.pixels)); // a refusal changes nothing
        return done ? image.pixels : cv::Mat();
    };
    EXPECT_TRUE(same(cut(10, 5, 20, 30), whole.pixels(cv::Rect(10, 5, 20, 30))));
    EXPECT_TRUE(same(cut(-10, -5, 20, 30), whole.pixels(cv::Rect(0, 0, 10, 25))));
    EXPECT_TRUE(same(cut(40, 30, most, most), whole.pixels(cv::Rect(40, 30, 10, 10))));
    EXPECT_TRUE(same(cut(-5, -5, 1000, 1000), whole.pixels));
    EXPECT_TRUE(cut(50, 0, 10, 10).empty());
    EXPECT_TRUE(cut(0, -20, 10, 20).empty());
    EXPECT_TRUE(cut(0, 0, 0, 10).empty());
    EXPECT_TRUE(cut(5, 5, -3, 10).empty());
}

TEST(Geometry, resizeKeepsThePaperAsLargeAsItWas)
{
    for (const auto scaling : {mirvak::Scaling::nearest,
                               mirvak::Scaling::bilinear,
                               mirvak::Scaling::area,
                               mirvak::Scaling::bicubic}) {
        Image image = randomImage(80, 60);
        image.pixels(cv::Rect(0, 0, 40, 60)).setTo(cv::Scalar(250, 10, 20));
        image.dpi = 200;
        ASSERT_TRUE(mirvak::resize(image, 40, 30, scaling));
        EXPECT_EQ(image.pixels.size(), cv::Size(40, 30));
        EXPECT_DOUBLE_EQ(image.dpi, 100);
        EXPECT_EQ(image.pixels.at<cv::Vec3b>(15, 8), cv::Vec3b(250, 10, 20));
    }
    Image image = randomImage(8, 6);
    for (const cv::Size bad : {cv::Size(0, 5), {5, 0}, {-1, 5}, {100'000, 100'000}})
        EXPECT_FALSE(mirvak::resize(image, bad.width, bad.height, mirvak::Scaling::bilinear));
    EXPECT_EQ(image.pixels.size(), cv::Size(8, 6));
}

TEST(Geometry, mergeLaysTheInsetWhereItIsAsked)
{
    const Image base = randomImage(100, 80);
    Image inset = randomImage(30, 30), merged;
    inset.pixels.setTo(cv::Scalar(1, 2, 3));
    inset.dpi = base.dpi / 2;
    for (const cv::Rect place :
         {cv::Rect(20, 10, 15, 40), {-5, -5, 15, 40}, {90, 70, 60, 60}, {200, 200, 10, 10}}) {
        ASSERT_TRUE(mirvak::merge(base, inset, place, merged));
        cv::Mat wanted = base.pixels.clone();
        wanted(place & cv::Rect(0, 0, 100, 80)).setTo(cv::Scalar(1, 2, 3));
        EXPECT_TRUE(same(merged.pixels, wanted)) << place;
        EXPECT_EQ(merged.dpi, base.dpi);
    }
    EXPECT_FALSE(mirvak::merge(base, inset, {0, 0, 0, 10}, merged));
    EXPECT_FALSE(mirvak::merge(base, inset, {0, 0, 50'000, 50'000}, merged));
}
