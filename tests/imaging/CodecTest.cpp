#include "Codec.h"
#include "DiskFullAt.h"
#include "PictureBytes.h"
#include "TempDir.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <opencv2/core.hpp>

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <future>
#include <sys/stat.h>

using mirvak::Bytes;
using mirvak::Image;
using mirvak::WriteResult;

namespace {

// Soft colour ramps: every codec must keep them, a lossy one too.
Image ramps(int width, int height)
{
    Image image;
    image.pixels.create(height, width, CV_8UC3);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x)
            image.pixels.at<cv::Vec3b>(y, x) = cv::Vec3b(static_cast<unsigned char>(40 + 170 * x / width),
                                                         static_cast<unsigned char>(60 + 150 * y / height),
                                                         static_cast<unsigned char>(200 - 100 * x / width));
    }
    return image;
}

double greatestDifference(const cv::Mat& a, const cv::Mat& b)
{
    return a.size() == b.size() ? cv::norm(a, b, cv::NORM_INF) : 1e9;
}

std::vector<std::string> filesIn(const std::string& folder)
{
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        names.push_back(entry.path().filename().string());
    return names;
}

size_t find(const Bytes& bytes, std::initializer_list<int> pattern)
{
    const Bytes wanted = bytesOf(pattern);
    const auto at = std::search(bytes.begin(), bytes.end(), wanted.begin(), wanted.end());
    return static_cast<size_t>(at - bytes.begin());
}

} // namespace

TEST(Codec, keepsPixelsAndResolutionInEveryFormat)
{
    // Names as users choose them, extensions in any case, odd sizes against row padding.
    const std::array<const char*, 5> names{"a.jpg", "B.JPEG", "扫描 1.png", "Скан.Bmp", "dot.in.name.PNG"};
    for (const char* name : names) {
        for (const cv::Size size : {cv::Size(61, 47), cv::Size(64, 32), cv::Size(1, 1)}) {
            const TempDir folder;
            Image image = ramps(size.width, size.height);
            image.dpi = 215;
            const std::string path = folder.file(name);
            ASSERT_EQ(mirvak::writeImage(path, image, 95), WriteResult::ok) << name;
            const auto read = mirvak::readImage(path);
            ASSERT_TRUE(read) << name;
            const bool lossy = std::string(name).find(".j") != std::string::npos || name[0] == 'B';
            EXPECT_LE(greatestDifference(read->pixels, image.pixels), lossy ? 12 : 0) << name << size;
            EXPECT_NEAR(read->dpi, 215, 0.02) << name; // whole pixels a metre in PNG and BMP
        }
    }
}

TEST(Codec, refusesOtherNamesAndPicturesWithoutWritingAnything)
{
    const TempDir folder;
    const Image image = ramps(20, 10);
    for (const char* name : {"a.gif", "jpg", "a", "a.", ".png/b", "a.jpg.tmp"})
        EXPECT_EQ(mirvak::writeImage(folder.file(name), image, 95), WriteResult::unknownFormat) << name;
    EXPECT_EQ(mirvak::writeImage(folder.file("a.jpg"), Image(), 95), WriteResult::badPicture);
    Image wide;
    wide.pixels.create(1, 70'000, CV_8UC3); // beyond what a JPEG header can say
    wide.pixels.setTo(0);
    EXPECT_EQ(mirvak::writeImage(folder.file("a.jpg"), wide, 95), WriteResult::badPicture);
    EXPECT_EQ(mirvak::writeImage(folder.file("a.png"), wide, 95), WriteResult::ok);
    EXPECT_THAT(filesIn(folder.path()), testing::ElementsAre("a.png"));
}

TEST(Codec, leavesNothingBehindWhenWritingFails)
{
    const TempDir folder;
    const Image image = ramps(400, 300);
    folder.write("old.bmp", "the old file");
    std::filesystem::create_directory(folder.file("folder.bmp"));
    {
        const DiskFullAt limit(64 * 1024);
        EXPECT_EQ(mirvak::writeImage(folder.file("new.bmp"), image, 95), WriteResult::ioError);
        EXPECT_EQ(mirvak::writeImage(folder.file("old.bmp"), image, 95), WriteResult::ioError);
    }
    EXPECT_EQ(mirvak::writeImage(folder.file("missing/a.bmp"), image, 95), WriteResult::ioError);
    EXPECT_EQ(mirvak::writeImage(folder.file("old.bmp/a.bmp"), image, 95), WriteResult::ioError);
    for (const char* taken : {"folder.bmp", "old.bmp"})
        EXPECT_EQ(mirvak::writeImage(folder.file(taken), image, 95), WriteResult::nameTaken);
    EXPECT_THAT(filesIn(folder.path()), testing::UnorderedElementsAre("old.bmp", "folder.bmp"));
    EXPECT_EQ(std::filesystem::file_size(folder.file("old.bmp")), 12U);
    // The same name succeeds as soon as the disk has room again.
    EXPECT_EQ(mirvak::writeImage(folder.file("new.bmp"), image, 95), WriteResult::ok);
    EXPECT_TRUE(mirvak::readImage(folder.file("new.bmp")));
}

TEST(Codec, storesPagesOfOneInkSmall)
{
    Image page = ramps(640, 480);
    page.pixels.setTo(cv::Scalar::all(255));
    page.pixels(cv::Rect(100, 90, 37, 55)).setTo(cv::Scalar::all(0));
    const auto depthAndType = [](const Bytes& png) { return std::make_pair(png[24], png[25]); };
    const Bytes bilevel = mirvak::encodeImage("png", page, 95);
    EXPECT_EQ(depthAndType(bilevel), std::make_pair(std::uint8_t{1}, std::uint8_t{0}));
    EXPECT_EQ(greatestDifference(mirvak::decodeImage(bilevel)->pixels, page.pixels), 0);
    page.pixels.at<cv::Vec3b>(479, 639) = cv::Vec3b(128, 128, 128);
    const Bytes grey = mirvak::encodeImage("png", page, 95);
    EXPECT_EQ(depthAndType(grey), std::make_pair(std::uint8_t{8}, std::uint8_t{0}));
    EXPECT_EQ(greatestDifference(mirvak::decodeImage(grey)->pixels, page.pixels), 0);
    page.pixels.at<cv::Vec3b>(0, 0) = cv::Vec3b(255, 254, 255); // one tinted pixel makes it a colour picture
    const Bytes colour = mirvak::encodeImage("png", page, 95);
    EXPECT_EQ(depthAndType(colour), std::make_pair(std::uint8_t{8}, std::uint8_t{2}));
    EXPECT_EQ(greatestDifference(mirvak::decodeImage(colour)->pixels, page.pixels), 0);
}

TEST(Codec, refusesBrokenFiles)
{
    const Image image = ramps(200, 150);
    for (const char* format : {"jpg", "png", "bmp"}) {
        const Bytes whole = mirvak::encodeImage(format, image, 90);
        ASSERT_TRUE(mirvak::decodeImage(whole));
        for (size_t eighth = 0; eighth < 8; ++eighth)
            EXPECT_FALSE(mirvak::decodeImage(
                Bytes(whole.begin(), whole.begin() + static_cast<ptrdiff_t>(whole.size() * eighth / 8))))
                << format << " cut to " << eighth << "/8";
        Bytes garbage = whole;
        for (size_t i = 60; i < garbage.size(); ++i)
            garbage[i] = static_cast<std::uint8_t>(i * 37 + i / 11);
        const auto read = mirvak::decodeImage(garbage);
        if (std::string(format) != "bmp") { // any bytes are pixels there
            EXPECT_FALSE(read) << format;
        }
    }
    const TempDir folder;
    EXPECT_FALSE(mirvak::readImage(folder.file("missing.jpg")));
    EXPECT_FALSE(mirvak::readImage(folder.path()));
    EXPECT_FALSE(mirvak::readImage(folder.write("text.jpg", "not a picture at all")));
    EXPECT_FALSE(mirvak::readImage(folder.write("empty.png", "")));
    EXPECT_FALSE(mirvak::readImage("/dev/zero"));
    // Nobody ever writes into this pipe.
    const std::string pipe = folder.file("pipe.jpg");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    auto read = std::async(std::launch::async, [&] { return mirvak::readImage(pipe); });
    EXPECT_EQ(read.wait_for(std::chrono::seconds(20)), std::future_status::ready) << "it hangs";
    const std::ofstream whoLetsItGo(pipe, std::ios::in | std::ios::out);
    EXPECT_FALSE(read.get());
}

// A few bytes that claim a picture of gigabytes must be refused before any memory is taken for it.
TEST(Codec, refusesSizesThatCannotBeInTheFile)
{
    const Image image = ramps(64, 64);
    Bytes bmp = mirvak::encodeImage("bmp", image, 90);
    for (const size_t at : {size_t{18}, size_t{22}})
        bmp[at + 3] = 0x3f;
    EXPECT_FALSE(mirvak::decodeImage(bmp));
    Bytes negative = mirvak::encodeImage("bmp", image, 90);
    std::fill_n(negative.begin() + 18, 4, std::uint8_t{0xff});
    EXPECT_FALSE(mirvak::decodeImage(negative));

    Bytes jpeg = mirvak::encodeImage("jpg", image, 90);
    const size_t frame = find(jpeg, {0xff, 0xc0});
    ASSERT_LT(frame + 9, jpeg.size());
    for (size_t i = frame + 5; i < frame + 9; ++i)
        jpeg[i] = 0xf0; // 61680 x 61680
    EXPECT_FALSE(mirvak::decodeImage(jpeg));

    // 40000 x 40000 pixels of one bit, valid header checksum, hardly any data.
    const Bytes png =
        bytesOf({0x89, 0x50, 0x4e, 0x47, 0x0d, 0x0a, 0x1a, 0x0a, 0,    0,    0,    0x0d, 0x49, 0x48,
                 0x44, 0x52, 0,    0,    0x9c, 0x40, 0,    0,    0x9c, 0x40, 1,    0,    0,    0,
                 0,    0x79, 0x77, 0x33, 0xa8, 0,    0,    0,    0x0c, 0x49, 0x44, 0x41, 0x54, 0x78,
                 0x9c, 0x63, 0x60, 0xa0, 0x0c, 0,    0,    0,    0x40, 0,    1,    0xb7, 0x34, 0x7c,
                 0xef, 0,    0,    0,    0,    0x49, 0x45, 0x4e, 0x44, 0xae, 0x42, 0x60, 0x82});
    EXPECT_FALSE(mirvak::decodeImage(png));
}

TEST(Codec, turnsPhotographsUpright)
{
    // Four quarters a b / c d, and how each orientation of Exif 2.3 wants them shown.
    const std::array<cv::Vec3b, 4> colours{
        cv::Vec3b(220, 40, 40), {40, 200, 40}, {40, 60, 220}, {210, 210, 40}};
    Image image = ramps(96, 64);
    for (int i = 0; i < 4; ++i)
        image.pixels(cv::Rect(i % 2 * 48, i / 2 * 32, 48, 32)).setTo(colours[static_cast<size_t>(i)]);
    const Bytes jpeg = mirvak::encodeImage("jpg", image, 95);
    const std::array<const char*, 9> shown{
        "abcd", "abcd", "badc", "dcba", "cdab", "acbd", "cadb", "dbca", "bdac"};
    for (int orientation = 0; orientation <= 8; ++orientation) {
        const auto read = mirvak::decodeImage(withOrientation(jpeg, orientation));
        ASSERT_TRUE(read) << orientation;
        const cv::Mat& p = read->pixels;
        EXPECT_EQ(p.cols, orientation >= 5 ? 64 : 96) << orientation;
        for (int i = 0; i < 4; ++i) {
            const cv::Vec3b seen =
                p.at<cv::Vec3b>(p.rows * (1 + i / 2 * 2) / 4, p.cols * (1 + i % 2 * 2) / 4);
            const cv::Vec3b& wanted =
                colours[static_cast<size_t>(shown[static_cast<size_t>(orientation)][i] - 'a')];
            EXPECT_LE(cv::norm(seen, wanted, cv::NORM_INF), 12) << orientation << " quarter " << i;
        }
    }
}

TEST(Codec, laysTransparentPicturesOnWhite)
{
    // 2 x 1 pixels, red opaque and red transparent, as another program wrote it.
    const Bytes png = bytesOf({0x89, 0x50, 0x4e, 0x47, 0x0d, 0x0a, 0x1a, 0x0a, 0,    0,    0,    0x0d, 0x49,
                               0x48, 0x44, 0x52, 0,    0,    0,    2,    0,    0,    0,    1,    8,    6,
                               0,    0,    0,    0xf4, 0x22, 0x7f, 0x8a, 0,    0,    0,    0x14, 0x49, 0x44,
                               0x41, 0x54, 0x78, 1,    1,    9,    0,    0xf6, 0xff, 0,    0xff, 0,    0,
                               0xff, 0xff, 0,    0,    0,    0x10, 0xf8, 2,    0xfe, 0x27, 0x6f, 0x57, 0xf2,
                               0,    0,    0,    0,    0x49, 0x45, 0x4e, 0x44, 0xae, 0x42, 0x60, 0x82});
    const auto read = mirvak::decodeImage(png);
    ASSERT_TRUE(read);
    EXPECT_EQ(read->pixels.at<cv::Vec3b>(0, 0), cv::Vec3b(255, 0, 0));
    EXPECT_EQ(read->pixels.at<cv::Vec3b>(0, 1), cv::Vec3b(255, 255, 255));
}
