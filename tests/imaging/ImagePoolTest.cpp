#include "ImagePool.h"

#include "SharedPixels.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <thread>
#include <vector>

using mirvak::Image;
using mirvak::ImagePool;

namespace {

TEST(ImagePool, WhatIsGivenBackIsUsedAgainAtItsSizeWithNothingOfTheOldPicture)
{
    ImagePool pool;
    auto image = pool.take(64, 48);
    ASSERT_EQ(image->pixels.size(), cv::Size(64, 48));
    ASSERT_EQ(image->pixels.type(), CV_8UC3);
    image->dpi = 300;
    image->taken = std::chrono::steady_clock::now();
    const uchar* const place = image->pixels.data;
    pool.giveBack(std::move(image));
    EXPECT_NE(pool.take(48, 64)->pixels.data, place);
    const auto again = pool.take(64, 48);
    EXPECT_EQ(again->pixels.data, place);
    EXPECT_EQ(again->dpi, mirvak::cameraDpi);
    EXPECT_FALSE(again->taken);
    EXPECT_NE(pool.take(64, 48)->pixels.data, place) << "it is lent to one at a time";
}

TEST(ImagePool, ATurnedPictureComesBackUpright)
{
    ImagePool pool;
    auto image = pool.take(64, 48);
    const uchar* const place = image->pixels.data;
    image->spare = image->pixels;
    image->pixels = cv::Mat(64, 48, CV_8UC3);
    pool.giveBack(std::move(image));
    const auto again = pool.take(64, 48);
    EXPECT_EQ(again->pixels.size(), cv::Size(64, 48));
    EXPECT_EQ(again->pixels.data, place);

    auto turned = std::make_unique<Image>();
    turned->pixels = cv::Mat(64, 48, CV_8UC3);
    turned->spare = again->pixels; // which somebody still looks at
    pool.giveBackShown(std::move(turned));
    EXPECT_NE(pool.take(64, 48)->pixels.data, place);
}

TEST(ImagePool, WhatSomebodyStillShowsWaitsUntilItIsLetGo)
{
    ImagePool pool;
    auto image = pool.take(64, 48);
    const uchar* const place = image->pixels.data;
    Image shown = mirvak::share(*image);
    pool.giveBackShown(std::move(image));
    pool.giveBack(std::make_unique<Image>(mirvak::share(shown)));
    auto other = pool.take(64, 48);
    EXPECT_NE(other->pixels.data, place);
    other.reset();
    shown = Image();
    EXPECT_EQ(pool.take(64, 48)->pixels.data, place);
}

// Nothing but the loan orders what the two threads do with the pixels; eight bytes at a time, for the thread
// sanitizer remembers few accesses of a place.
TEST(ImagePool, APictureThatAnotherThreadReadsIsWrittenOnlyWhenItHasBeenRead)
{
    constexpr int words = 64 * 48 * 3 / 8;
    ImagePool pool;
    auto image = pool.take(64, 48);
    const uchar* const place = image->pixels.data;
    std::fill_n(reinterpret_cast<std::int64_t*>(image->pixels.data), words, 7);
    auto loan = mirvak::lend(*image);
    pool.giveBackShown(std::move(image));
    std::int64_t sum = 0;
    std::thread reader([&sum, loan = std::move(loan)]() mutable {
        const auto* first = reinterpret_cast<const std::int64_t*>(loan.get());
        sum = std::accumulate(first, first + words, std::int64_t(0));
        loan.reset();
    });
    auto next = pool.take(64, 48);
    for (int i = 0; i < 20'000 && next->pixels.data != place; ++i) {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
        next = pool.take(64, 48);
    }
    auto* const first = reinterpret_cast<std::int64_t*>(next->pixels.data);
    std::iota(first, first + words, 0);
    reader.join();
    EXPECT_EQ(next->pixels.data, place);
    EXPECT_EQ(sum, words * 7);
}

// A view that holds pictures back costs the memory of these, and the pool never keeps more than six.
TEST(ImagePool, KeepsTheNewestSixAndForgetsThemWhenItIsCleared)
{
    ImagePool pool;
    std::vector<std::unique_ptr<Image>> images;
    std::vector<const uchar*> places;
    for (int i = 0; i < 8; ++i) {
        images.push_back(pool.take(64, 48));
        places.push_back(images.back()->pixels.data);
    }
    std::vector<Image> held; // so that no freed memory is got again
    for (auto& image : images) {
        held.push_back(mirvak::share(*image));
        pool.giveBackShown(std::move(image));
    }
    EXPECT_FALSE(mirvak::isShared(held[1].pixels)) << "there is no room for it";
    EXPECT_TRUE(mirvak::isShared(held[2].pixels));
    held.erase(held.begin() + 2, held.end());
    std::vector<std::unique_ptr<Image>> taken;
    size_t known = 0;
    for (int i = 0; i < 8; ++i) {
        taken.push_back(pool.take(64, 48));
        known += std::count(places.begin() + 2, places.end(), taken.back()->pixels.data);
        EXPECT_TRUE(taken.back()->pixels.data != places[0] && taken.back()->pixels.data != places[1]);
    }
    EXPECT_EQ(known, 6U);
    Image watched = mirvak::share(*taken.front());
    pool.giveBackShown(std::move(taken.front()));
    EXPECT_TRUE(mirvak::isShared(watched.pixels));
    pool.clear();
    EXPECT_FALSE(mirvak::isShared(watched.pixels));
}

} // namespace
