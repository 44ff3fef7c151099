#include "FrameDecoder.h"
#include "Pictures.h"
#include "Pixels.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <random>

using namespace mirvak;
using pictures::Bytes;

namespace {

constexpr int width = 8, height = 6;

/// Two pixels of red and of blue side by side, as cameras say them (YUV after BT.601, video range), and what
/// the planes behind hold for each four. Formats without colour are grey all over.
struct Layout
{
    PixelFormat format;
    Bytes red, blue;
    std::vector<std::pair<Bytes, Bytes>> chroma{};
};
constexpr uint8_t greyLevel = 126;

/// A frame whose rows are followed by `padding` bytes that belong to no pixel; the last one too.
Bytes rawBytes(const Layout& layout, size_t padding)
{
    Bytes bytes;
    const auto addRows = [&](int rows, const Bytes& red, const Bytes& blue, size_t pad) {
        for (int y = 0; y < rows; ++y) {
            for (int pair = 0; pair < width / 2; ++pair) {
                const Bytes& pixels = pair < width / 4 ? red : blue;
                bytes.insert(bytes.end(), pixels.begin(), pixels.end());
            }
            bytes.insert(bytes.end(), pad, 0x55);
        }
    };
    addRows(height, layout.red, layout.blue, padding);
    for (const auto& [red, blue] : layout.chroma) // two planes share what one has for a row
        addRows(height / 2, red, blue, padding / layout.chroma.size());
    return bytes;
}

RawFrame jpegFrame(const Bytes& jpeg, cv::Size size)
{
    return {PixelFormat::Mjpeg, size.width, size.height, 0, jpeg.data(), jpeg.size()};
}

} // namespace

TEST(FrameDecoder, RawFormatsKeepTheirColoursAndMissNoByte)
{
    const Layout layouts[] = {
        {PixelFormat::Yuyv, {81, 90, 81, 240}, {41, 240, 41, 110}},
        {PixelFormat::Nv12, {81, 81}, {41, 41}, {{{90, 240}, {240, 110}}}},
        {PixelFormat::Yu12, {81, 81}, {41, 41}, {{{90}, {240}}, {{240}, {110}}}},
        {PixelFormat::Rgb24, {255, 0, 0, 255, 0, 0}, {0, 0, 255, 0, 0, 255}},
        {PixelFormat::Bgr24, {0, 0, 255, 0, 0, 255}, {255, 0, 0, 255, 0, 0}},
        {PixelFormat::Grey, {greyLevel, greyLevel}, {greyLevel, greyLevel}},
        // Little endian; the low byte must not round up.
        {PixelFormat::Y16, {0xff, greyLevel, 0xff, greyLevel}, {0xff, greyLevel, 0xff, greyLevel}}};
    for (const Layout& layout : layouts) {
        cv::Mat wanted(height, width, CV_8UC3, cv::Scalar::all(greyLevel));
        if (!isGrey(layout.format)) {
            wanted.colRange(0, width / 2).setTo(cv::Scalar(255, 0, 0));
            wanted.colRange(width / 2, width).setTo(cv::Scalar(0, 0, 255));
        }
        for (const size_t padding : {0, 5, 6}) {
            if (padding % std::max<size_t>(1, layout.chroma.size()) != 0)
                continue; // the planar layout halves the stride for its chroma rows
            SCOPED_TRACE(testing::Message() << int(layout.format) << " padded by " << padding);
            Bytes bytes = rawBytes(layout, padding);
            const auto decode = [&](Image& image, size_t stride) {
                return FrameDecoder().decode(
                    {layout.format, width, height, stride, bytes.data(), bytes.size()}, 1.0, image);
            };
            const size_t stride = layout.red.size() * width / 2 + padding;
            // Drivers may leave out what follows the last pixel.
            bytes.resize(bytes.size() - padding / std::max<size_t>(1, layout.chroma.size()));
            Image image, refused;
            ASSERT_TRUE(decode(image, stride));
            for (const auto& [odd, isShared] :
                 {std::pair(cv::Size(width - 1, height),
                            !layout.chroma.empty() || layout.format == PixelFormat::Yuyv),
                  std::pair(cv::Size(width, height - 1), !layout.chroma.empty())})
                EXPECT_NE(FrameDecoder().decode(
                              {layout.format, odd.width, odd.height, stride, bytes.data(), bytes.size()},
                              1.0,
                              refused),
                          isShared)
                    << "colour that pixels share needs all of them";
            EXPECT_LE(difference(image.pixels, wanted), 3); // rounding to 8 bits in YUV and back
            EXPECT_FALSE(decode(refused, 1));
            bytes.pop_back();
            EXPECT_FALSE(decode(refused, stride));
            bytes.clear();
            EXPECT_FALSE(decode(refused, stride));
        }
    }
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
