#include "GlyphFeatures.h"
#include "TestGlyphs.h"

#include <opencv2/imgproc.hpp>

#include <fstream>

using namespace mirvak;
using namespace testGlyphs;

TEST(GlyphFeatures, SizeWeightAndDarknessMatterLittleAndShapeMuch)
{
    double furthestSame = 0, nearestOther = 10;
    for (char32_t c = firstCharacter; c < firstCharacter + 12; ++c) {
        const cv::Mat usual = glyphFeaturesOf(glyphOf(c));
        ASSERT_EQ(usual.size(), cv::Size(glyphFeatures, 1));
        EXPECT_NEAR(cv::norm(usual), 1, 1e-4);
        cv::Mat framed;
        cv::copyMakeBorder(glyphOf(c), framed, 3, 17, 9, 1, cv::BORDER_CONSTANT, 255);
        for (const cv::Mat& same :
             {glyphOf(c, 64), glyphOf(c, 24), glyphOf(c, 32, 120), glyphOf(c, 64, 0, 3), framed})
            furthestSame = std::max(furthestSame, cv::norm(usual, glyphFeaturesOf(same)));
        for (char32_t other = c + 1; other < firstCharacter + 12; ++other)
            nearestOther = std::min(nearestOther, cv::norm(usual, glyphFeaturesOf(glyphOf(other))));
    }
    EXPECT_LT(furthestSame, nearestOther);
}

TEST(GlyphFeatures, TurnedStrokesAreOtherStrokes)
{
    const cv::Mat glyph = glyphOf(firstCharacter);
    cv::Mat turned, mirrored;
    cv::rotate(glyph, turned, cv::ROTATE_90_CLOCKWISE);
    cv::flip(glyph, mirrored, 1);
    const cv::Mat features = glyphFeaturesOf(glyph);
    EXPECT_GT(cv::norm(features, glyphFeaturesOf(turned)), 0.3);
    EXPECT_GT(cv::norm(features, glyphFeaturesOf(mirrored)), 0.3);
}

TEST(GlyphFeatures, WhereThereIsNoInkThereAreNone)
{
    EXPECT_TRUE(glyphFeaturesOf({}).empty());
    EXPECT_TRUE(glyphFeaturesOf(cv::Mat(1, 1, CV_8UC1, cv::Scalar(255))).empty());
    EXPECT_TRUE(glyphFeaturesOf(cv::Mat(40, 30, CV_8UC1, cv::Scalar(245))).empty());
    for (const cv::Size size : {cv::Size(1, 1), cv::Size(1, 300), cv::Size(300, 1), cv::Size(40, 40)}) {
        const cv::Mat features = glyphFeaturesOf(cv::Mat(size, CV_8UC1, cv::Scalar(0)));
        EXPECT_TRUE(features.empty() || cv::checkRange(features)) << size;
    }
}

TEST_F(GlyphFiles, ABookTellsWhatLiesNear)
{
    const GlyphBook book = bookOf(path());
    EXPECT_EQ(book.size(), static_cast<size_t>(characterCount));
    for (const char32_t number : {0U, 7U, characterCount - 1U}) {
        const char32_t c = firstCharacter + number;
        const cv::Mat place = book.place(glyphFeaturesOf(glyphOf(c, 48, 60)));
        const auto near = book.nearest(place, 3);
        ASSERT_EQ(near.size(), 3U);
        EXPECT_EQ(near[0].character, c);
        EXPECT_LT(near[0].distance, near[1].distance);
        EXPECT_LE(near[1].distance, near[2].distance);
        ASSERT_TRUE(book.distance(place, c));
        EXPECT_DOUBLE_EQ(*book.distance(place, c), near[0].distance);
        EXPECT_FALSE(book.distance(place, firstCharacter + characterCount));
        EXPECT_EQ(book.nearest(place, 1000).size(), static_cast<size_t>(characterCount));
    }
}

TEST_F(GlyphFiles, ABrokenBookIsRefused)
{
    bookOf(path());
    std::ifstream file(path(), std::ios::binary);
    const std::string whole((std::istreambuf_iterator<char>(file)), {});
    const auto loads = [&](const std::string& bytes) {
        std::ofstream(path("broken"), std::ios::binary) << bytes;
        return GlyphBook::load(path("broken")).has_value();
    };
    ASSERT_TRUE(loads(whole));
    EXPECT_FALSE(GlyphBook::load(path("missing")));
    for (const size_t length : {size_t(0), size_t(7), size_t(20), whole.size() / 2, whole.size() - 1})
        EXPECT_FALSE(loads(whole.substr(0, length))) << length;
    const auto with = [&](size_t at, const std::string& bytes) {
        return std::string(whole).replace(at, bytes.size(), bytes);
    };
    EXPECT_FALSE(loads(with(0, "G"))) << "another kind";
    EXPECT_FALSE(loads(with(8, std::string(4, '\0')))) << "no dimensions";
    EXPECT_FALSE(loads(with(8, std::string(4, '\xff')))) << "more than there can be";
    EXPECT_FALSE(loads(with(12, std::string(4, '\xff')))) << "more characters than there can be";
    EXPECT_FALSE(loads(with(16, std::string(4, '\0')))) << "no unit";
    EXPECT_FALSE(GlyphBook::save(
        "/nowhere/at/all", cv::Mat::ones(1, 1, CV_32F), cv::Mat::ones(1, 1, CV_32F), {U'一'}));
}
