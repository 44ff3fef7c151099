#include "Codec.h"
#include "DiskFullAt.h"
#include "JpegHeader.h"
#include "PictureBytes.h"
#include "Pixels.h"
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

size_t find(const Bytes& bytes, const Bytes& wanted)
{
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
            EXPECT_LE(difference(read->pixels, image.pixels), lossy ? 12 : 0) << name << size;
            EXPECT_NEAR(read->dpi, 215, 0.0127) << name; // PNG and BMP: to half a pixel a metre
        }
    }
}

// Other programs read it down as well as across, and a BMP by the size that it claims.
TEST(Codec, tellsSizeAndResolutionInBothDirections)
{
    Image image = ramps(61, 47);
    image.dpi = 254; // ten thousand dots a metre
    const Bytes bmp = mirvak::encodeImage("bmp", image, 95);
    EXPECT_EQ(Bytes(bmp.begin() + 38, bmp.begin() + 46), hexBytes("10270000 10270000"));
    size_t claimed = 0;
    for (size_t i = 0; i < 4; ++i)
        claimed |= size_t{bmp[2 + i]} << 8 * i;
    EXPECT_EQ(claimed, bmp.size());
    const Bytes png = mirvak::encodeImage("png", image, 95);
    EXPECT_LT(find(png, hexBytes("70485973 00002710 00002710 01")), png.size());
    for (const int quality : {-1, 95, 1000}) { // the outer ones count as the nearest that there is
        const Bytes jpeg = mirvak::encodeImage("jpg", image, quality);
        ASSERT_GT(jpeg.size(), 18U) << quality;
        EXPECT_EQ(Bytes(jpeg.begin() + 13, jpeg.begin() + 18), hexBytes("01 00fe 00fe")) << quality;
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
    EXPECT_THAT(folder.names(), testing::ElementsAre("a.png"));
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
    EXPECT_THAT(folder.names(), testing::UnorderedElementsAre("old.bmp", "folder.bmp"));
    EXPECT_EQ(folder.content("old.bmp"), "the old file");
    // The same name succeeds as soon as the disk has room again.
    EXPECT_EQ(mirvak::writeImage(folder.file("new.bmp"), image, 95), WriteResult::ok);
    EXPECT_TRUE(mirvak::readImage(folder.file("new.bmp")));
}

TEST(Codec, storesPagesOfOneInkSmall)
{
    Image page = ramps(640, 480);
    page.pixels.setTo(cv::Scalar::all(255));
    page.pixels(cv::Rect(100, 90, 37, 55)).setTo(cv::Scalar::all(0));
    const auto expectStored = [&](int depth, int type) {
        const Bytes png = mirvak::encodeImage("png", page, 95);
        EXPECT_EQ(std::make_pair(int{png[24]}, int{png[25]}), std::make_pair(depth, type));
        EXPECT_EQ(difference(mirvak::decodeImage(png)->pixels, page.pixels), 0);
    };
    expectStored(1, 0);
    page.pixels.at<cv::Vec3b>(479, 639) = cv::Vec3b(128, 128, 128);
    expectStored(8, 0);
    for (const cv::Vec3b& tint :
         {cv::Vec3b(255, 254, 255), {255, 255, 254}}) { // one tinted pixel makes it a colour picture
        page.pixels.at<cv::Vec3b>(0, 0) = tint;
        expectStored(8, 2);
    }
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
    const size_t frame = find(jpeg, hexBytes("ffc0"));
    ASSERT_LT(frame + 9, jpeg.size());
    for (size_t i = frame + 5; i < frame + 9; ++i)
        jpeg[i] = 0xf0; // 61680 x 61680
    EXPECT_FALSE(mirvak::decodeImage(jpeg));

    // 40000 x 40000 pixels of one bit, valid header checksum, hardly any data.
    const Bytes png = hexBytes("89504e470d0a1a0a 0000000d4948445200009c4000009c400100000000797733a8"
                               "0000000c49444154789c6360a00c000000400001b7347cef 0000000049454e44ae426082");
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
    const Bytes padded = withSegment(withOrientation(jpeg, 6), hexBytes("ffffff")); // as some cameras align
    EXPECT_EQ(mirvak::decodeImage(padded).value_or(Image()).pixels.size(), cv::Size(64, 96));
}

// The same resolution of 100 dots per centimetre or 254 per inch, in every way in which a JPEG can say it.
TEST(Codec, readsTheResolutionInItsUnit)
{
    Image image = ramps(64, 32);
    image.dpi = 254;
    const Bytes inches = mirvak::encodeImage("jpg", image, 90);
    const auto dpiOf = [](const Bytes& bytes) {
        return mirvak::decodeImage(bytes).value_or(Image{{}, -1, {}, {}}).dpi;
    };
    EXPECT_NEAR(dpiOf(inches), 254, 0.01);
    const auto jfif = [&](int unit, int density) {
        Bytes bytes = inches;
        for (const size_t axis : {size_t{14}, size_t{16}})
            bytes[axis + 1] = static_cast<std::uint8_t>(density);
        bytes[13] = static_cast<std::uint8_t>(unit);
        return bytes;
    };
    EXPECT_NEAR(dpiOf(jfif(2, 100)), 254, 0.01);
    EXPECT_EQ(dpiOf(jfif(0, 100)), mirvak::cameraDpi) << "a mere shape of the pixels";
    EXPECT_EQ(dpiOf(hexBytes("89504e470d0a1a0a 0000000d49484452000000010000000108000000003a7e9b55"
                             "0000000970485973000027100000271000e36e618f "
                             "0000000a49444154789c636800000082008177cd72b6 0000000049454e44ae426082")),
              mirvak::cameraDpi)
        << "the same in a PNG";
    Bytes vague = mirvak::encodeImage("bmp", image, 90);
    std::fill_n(vague.begin() + 38, 3, std::uint8_t{0});
    vague[38] = 1; // a pixel a metre
    EXPECT_EQ(dpiOf(vague), mirvak::cameraDpi) << "nor is that of any paper";
    // Exif: width and height of a pixel as 1000 / 10, and the unit; either byte order.
    const Bytes big =
        hexBytes("ffe1 0042 457869660000 4d4d002a00000008 0003 011a 0005 00000001 00000032"
                 "011b 0005 00000001 00000032 0128 0003 00000001 00030000 00000000 000003e8 0000000a");
    const Bytes little =
        hexBytes("ffe1 0042 457869660000 49492a0008000000 0300 1a01 0500 01000000 32000000"
                 "1b01 0500 01000000 32000000 2801 0300 01000000 03000000 00000000 e8030000 0a000000");
    for (Bytes exif : {big, little}) {
        EXPECT_NEAR(dpiOf(withSegment(jfif(0, 1), exif)), 254, 0.01) << exif[10];
        EXPECT_NEAR(mirvak::readJpegHeader(withSegment(jfif(0, 1), exif)).dpiDown, 254, 0.01) << exif[10];
        for (const int at : {2, 20}) // before and behind the other mark, which decides
            EXPECT_NEAR(dpiOf(withSegment(jfif(1, 200), exif, at)), 200, 0.01) << at;
        exif[exif[10] == 'M' ? 53 : 52] = 2;
        EXPECT_NEAR(dpiOf(withSegment(jfif(0, 1), exif)), 100, 0.01) << "inches";
    }
}

TEST(Codec, readsEveryKindOfBmp)
{
    // Red, green above; blue, white below. Rows lie upside down and take four bytes at least.
    const std::array<cv::Vec3b, 4> wanted{cv::Vec3b(255, 0, 0), {0, 255, 0}, {0, 0, 255}, {255, 255, 255}};
    struct Kind
    {
        std::string name, header, table, pixels;
        int dpi = 72;
    };
    const auto header = [](const std::string& height,
                           const char* bits,
                           const char* coding,
                           const std::string& colours = "04000000") {
        return "28000000 02000000 " + height + "0100" + bits + "00" + coding +
               "000000 00000000 130b0000 130b0000 " + colours + " 00000000";
    };
    const std::string up = "02000000", down = "feffffff", old = "0c000000 0200 0200 0100 0800";
    const std::string palette = "0000ff00 00ff0000 ff000000 ffffff00";
    const std::string oldPalette = "0000ff 00ff00 ff0000 ffffff" + std::string(252 * 6, '0');
    for (const Kind& kind :
         {Kind{"5 bits each", header(up, "10", "00"), "", "1f00ff7f 007ce003"},
          Kind{"5, 6, 5", header(up, "10", "03"), "00f80000 e0070000 1f000000", "1f00ffff 00f8e007"},
          Kind{"32 bits", header(up, "20", "00"), "", "ff000009 ffffff09 0000ff09 00ff0009"},
          Kind{"red first",
               header(up, "20", "03"),
               "ff000000 00ff0000 0000ff00",
               "0000ff09 ffffff09 ff000009 00ff0009"},
          Kind{"from the top", header(down, "18", "00"), "", "0000ff00ff000000 ff0000ffffff0000"},
          Kind{"palette of 8 bits", header(up, "08", "00"), palette, "02030000 00010000"},
          Kind{"palette of 4 bits", header(up, "04", "00"), palette, "23000000 01000000"},
          Kind{"more colours than fit", header(up, "04", "00", "ffffff7f"), palette, "23000000 01000000"},
          Kind{"palette of OS/2", old, oldPalette, "02030000 00010000", 215}}) {
        Bytes bmp = hexBytes("424d 00000000 00000000 00000000" + kind.header + kind.table);
        bmp[10] = static_cast<std::uint8_t>(bmp.size());
        bmp[11] = static_cast<std::uint8_t>(bmp.size() >> 8);
        const Bytes pixels = hexBytes(kind.pixels);
        bmp.insert(bmp.end(), pixels.begin(), pixels.end());
        const auto read = mirvak::decodeImage(bmp);
        ASSERT_TRUE(read) << kind.name;
        ASSERT_EQ(read->pixels.size(), cv::Size(2, 2)) << kind.name;
        for (int i = 0; i < 4; ++i)
            EXPECT_EQ(read->pixels.at<cv::Vec3b>(i / 2, i % 2), wanted[static_cast<size_t>(i)])
                << kind.name << i;
        EXPECT_NEAR(read->dpi, kind.dpi, 0.02) << kind.name;
    }
}

TEST(Codec, keepsTheColourOfThinLinesAndTheQuality)
{
    Image lines = ramps(64, 64);
    lines.pixels.setTo(cv::Scalar::all(250));
    for (int y = 0; y < 64; y += 2)
        lines.pixels.row(y).setTo(cv::Scalar(210, 40, 40)); // red print
    const cv::Mat read = mirvak::decodeImage(mirvak::encodeImage("jpg", lines, 95))->pixels;
    EXPECT_LE(difference(read, lines.pixels), 30);
    EXPECT_LT(mirvak::encodeImage("jpg", lines, 50).size(), mirvak::encodeImage("jpg", lines, 98).size());
}

TEST(Codec, laysTransparentPicturesOnWhite)
{
    // 2 x 1 pixels, red opaque and red transparent, as another program wrote it.
    const Bytes png =
        hexBytes("89504e470d0a1a0a 0000000d4948445200000002000000010806000000f4227f8a"
                 "00000014494441547801010900f6ff00ff0000ffff00000010f802fe276f57f2 0000000049454e44ae426082");
    const auto read = mirvak::decodeImage(png);
    ASSERT_TRUE(read);
    EXPECT_EQ(read->pixels.at<cv::Vec3b>(0, 0), cv::Vec3b(255, 0, 0));
    EXPECT_EQ(read->pixels.at<cv::Vec3b>(0, 1), cv::Vec3b(255, 255, 255));
}
