#include "FrameDecoder.h"
#include "Pictures.h"
#include "Pixels.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <random>

using namespace mirvak;
using pictures::Bytes;

namespace {

constexpr int width = 8;
constexpr int height = 6;

/// One colour in every way in which cameras say it; YUV after BT.601, video range.
struct Colour
{
    cv::Vec3b rgb;
    uint8_t y, u, v;
};
constexpr int greyLevel = 126; // what the luma 124 of the grey below means in full range
const Colour red{{255, 0, 0}, 81, 90, 240};
const Colour blue{{0, 0, 255}, 41, 240, 110};
const Colour grey{{greyLevel, greyLevel, greyLevel}, 124, 128, 128};

/// The left half red, the right half blue, for formats without colour grey all over.
const Colour& colourAt(PixelFormat format, int x)
{
    return isGrey(format) ? grey : x < width / 2 ? red : blue;
}

uint8_t byteAt(PixelFormat format, int x, int byte)
{
    const Colour& colour = colourAt(format, x);
    switch (format) {
    case PixelFormat::Yuyv:
        return byte == 0 ? colour.y : x % 2 == 0 ? colour.u : colour.v;
    case PixelFormat::Rgb24:
        return colour.rgb[byte];
    case PixelFormat::Bgr24:
        return colour.rgb[2 - byte];
    case PixelFormat::Grey:
        return greyLevel;
    case PixelFormat::Y16:
        return byte == 0 ? 0xff : greyLevel; // little endian; the low byte must not round up
    default:
        return colour.y;
    }
}

int bytesPerPixel(PixelFormat format)
{
    switch (format) {
    case PixelFormat::Yuyv:
    case PixelFormat::Y16:
        return 2;
    case PixelFormat::Rgb24:
    case PixelFormat::Bgr24:
        return 3;
    default:
        return 1;
    }
}

/// Bytes of a frame whose rows are followed by `padding` bytes that belong to no pixel.
Bytes rawBytes(PixelFormat format, size_t padding)
{
    constexpr uint8_t noPixel = 0x55;
    Bytes bytes;
    const auto pad = [&](size_t count) { bytes.insert(bytes.end(), count, noPixel); };
    for (int y = 0; y < height; ++y, pad(padding)) {
        for (int x = 0; x < width; ++x) {
            for (int byte = 0; byte < bytesPerPixel(format); ++byte)
                bytes.push_back(byteAt(format, x, byte));
        }
    }
    if (format == PixelFormat::Nv12) {
        for (int y = 0; y < height / 2; ++y, pad(padding)) {
            for (int x = 0; x < width; x += 2) {
                bytes.push_back(colourAt(format, x).u);
                bytes.push_back(colourAt(format, x).v);
            }
        }
    }
    for (int row = 0; format == PixelFormat::Yu12 && row < height; ++row, pad(padding / 2)) {
        for (int x = 0; x < width; x += 2)
            bytes.push_back(row < height / 2 ? colourAt(format, x).u : colourAt(format, x).v);
    }
    return bytes;
}

RawFrame rawFrame(PixelFormat format, const Bytes& bytes, size_t padding)
{
    const size_t stride = static_cast<size_t>(width * bytesPerPixel(format)) + padding;
    return {format, width, height, stride, bytes.data(), bytes.size()};
}

RawFrame jpegFrame(const Bytes& jpeg, cv::Size size)
{
    return {PixelFormat::Mjpeg, size.width, size.height, 0, jpeg.data(), jpeg.size()};
}

class RawFormats : public ::testing::TestWithParam<PixelFormat>
{
};

INSTANTIATE_TEST_SUITE_P(All,
                         RawFormats,
                         ::testing::Values(PixelFormat::Yuyv,
                                           PixelFormat::Nv12,
                                           PixelFormat::Yu12,
                                           PixelFormat::Rgb24,
                                           PixelFormat::Bgr24,
                                           PixelFormat::Grey,
                                           PixelFormat::Y16));

} // namespace

TEST_P(RawFormats, KeepTheirColoursWithAnyStride)
{
    // The planar layout halves the stride for its chroma rows; all others take odd padding too.
    const size_t odd = GetParam() == PixelFormat::Yu12 ? 6 : 5;
    for (const size_t padding : {size_t(0), odd}) {
        const Bytes bytes = rawBytes(GetParam(), padding);
        FrameDecoder decoder;
        Image image;
        ASSERT_TRUE(decoder.decode(rawFrame(GetParam(), bytes, padding), 1.0, image));
        ASSERT_EQ(image.pixels.size(), cv::Size(width, height));
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                const cv::Vec3b expected = colourAt(GetParam(), x).rgb;
                // Rounding to 8 bits in YUV and back moves a channel by up to 3 levels.
                EXPECT_LE(cv::norm(image.pixels.at<cv::Vec3b>(y, x), expected, cv::NORM_INF), 3)
                    << "at " << x << "," << y << " padding " << padding << " is "
                    << image.pixels.at<cv::Vec3b>(y, x);
            }
        }
    }
}

TEST_P(RawFormats, AreRefusedWhenAByteIsMissing)
{
    constexpr size_t padding = 4;
    const size_t lastPadding = GetParam() == PixelFormat::Yu12 ? padding / 2 : padding;
    Bytes bytes = rawBytes(GetParam(), padding);
    bytes.resize(bytes.size() - lastPadding); // drivers may leave out what follows the last pixel
    FrameDecoder decoder;
    Image image;
    EXPECT_TRUE(decoder.decode(rawFrame(GetParam(), bytes, padding), 1.0, image));
    bytes.pop_back();
    EXPECT_FALSE(decoder.decode(rawFrame(GetParam(), bytes, padding), 1.0, image));
    EXPECT_FALSE(decoder.decode(rawFrame(GetParam(), {}, padding), 1.0, image));
    RawFrame narrow = rawFrame(GetParam(), bytes, padding);
    narrow.stride = 1;
    EXPECT_FALSE(decoder.decode(narrow, 1.0, image));
}

TEST(FrameDecoder, AcceptsWhatCamerasDoToJpeg)
{
    const cv::Size size(96, 64);
    const cv::Mat truth = pictures::textured(size);
    setenv("TJ_RESTART", "1", 1); // the encoder then writes a restart marker after each row of blocks
    const Bytes restarts = pictures::jpeg(truth);
    unsetenv("TJ_RESTART");
    const Bytes plain = pictures::jpeg(truth);
    ASSERT_GT(restarts.size(), plain.size());
    FrameDecoder decoder;
    Image expected;
    ASSERT_TRUE(decoder.decode(jpegFrame(plain, size), 1.0, expected));
    EXPECT_LT(cv::norm(expected.pixels, truth, cv::NORM_L1) / (truth.total() * 3), 6) << "quality 95";

    Bytes padded = plain;
    padded.insert(padded.end(), 1000, 0);
    Bytes noEnd(plain.begin(), plain.end() - 2);
    Bytes spareBytes = noEnd;
    spareBytes.insert(spareBytes.end(), {0x12, 0x34, 0xff, 0xd9});
    const Bytes noTables = pictures::withoutHuffmanTables(plain);
    ASSERT_LT(noTables.size(), plain.size());
    for (const Bytes& variant : {restarts, padded, noEnd, spareBytes, noTables}) {
        FrameDecoder fresh; // no tables left over from another picture
        Image image;
        ASSERT_TRUE(fresh.decode(jpegFrame(variant, size), 1.0, image));
        EXPECT_EQ(difference(image.pixels, expected.pixels), 0);
    }
}

TEST(FrameDecoder, RefusesDamagedAndAlienJpeg)
{
    const cv::Size size(96, 64);
    const Bytes whole = pictures::jpeg(pictures::textured(size));
    FrameDecoder decoder;
    Image image;
    for (const size_t part :
         {size_t(0), size_t(1), size_t(2), whole.size() / 4, whole.size() / 2, whole.size() * 9 / 10}) {
        const Bytes cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(part));
        EXPECT_FALSE(decoder.decode(jpegFrame(cut, size), 1.0, image)) << part;
    }
    EXPECT_FALSE(decoder.decode(jpegFrame(whole, {96, 65}), 1.0, image)) << "another size than announced";
    // Where a packet is lost the coded data may fall into step again by chance, but rarely.
    constexpr int places = 20;
    int refused = 0;
    for (int place = 0; place < places; ++place) {
        Bytes hole = whole;
        const auto at = hole.end() - 400 - place * 150;
        hole.erase(at, at + 200);
        refused += decoder.decode(jpegFrame(hole, size), 1.0, image) ? 0 : 1;
    }
    EXPECT_GE(refused, places / 2);
}

TEST(FrameDecoder, SurvivesGarbageAndDecodesTheNextFrame)
{
    const cv::Size size(64, 48);
    const Bytes whole = pictures::jpeg(pictures::textured(size));
    const Bytes good = pictures::withoutHuffmanTables(whole); // would take over tables of a broken frame
    FrameDecoder decoder;
    Image expected;
    ASSERT_TRUE(decoder.decode(jpegFrame(good, size), 1.0, expected));
    std::mt19937 random(20210401);
    for (int round = 0; round < 400; ++round) {
        Bytes bad = whole;
        for (int hit = 0; hit < 1 + round % 8; ++hit)
            bad[random() % bad.size()] = static_cast<uint8_t>(random());
        if (round % 3 == 0)
            bad.resize(random() % bad.size());
        Image image;
        decoder.decode(jpegFrame(bad, size), 1.0, image); // either answer is right, a crash is not
        ASSERT_TRUE(decoder.decode(jpegFrame(good, size), 1.0, image)) << "after round " << round;
        ASSERT_EQ(difference(image.pixels, expected.pixels), 0) << "after round " << round;
    }
}

TEST(FrameDecoder, ShowsTheCentreInTheSizeOfTheFrame)
{
    const cv::Size size(200, 100);
    cv::Mat picture(size, CV_8UC3, cv::Scalar(255, 0, 0));
    picture(cv::Rect(25, 10, 150, 80)).setTo(cv::Scalar(0, 255, 0)); // more than the middle half
    const RawFrame frame{
        PixelFormat::Rgb24, size.width, size.height, picture.step, picture.data, picture.total() * 3};
    FrameDecoder decoder;
    Image image;
    image.pixels.create(size, CV_8UC3);
    const void* const memory = image.pixels.data;
    ASSERT_TRUE(decoder.decode(frame, 0.70710678, image));
    EXPECT_EQ(image.pixels.data, memory);
    EXPECT_EQ(difference(image.pixels, cv::Mat(size, CV_8UC3, cv::Scalar(0, 255, 0))), 0);
    ASSERT_TRUE(decoder.decode(frame, 1.0, image));
    EXPECT_EQ(image.pixels.data, memory);
    EXPECT_EQ(difference(image.pixels, picture), 0);
}
