#include "CharacterCells.h"
#include "GlyphBook.h"
#include "GlyphCheck.h"
#include "GlyphFeatures.h"
#include "Unicode.h"

#include <gtest/gtest.h>
#include <opencv2/imgproc.hpp>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

using namespace mirvak;

namespace {

constexpr int pitch = 40, lineHeight = 36, glyphSide = 32;
constexpr char32_t firstCharacter = 0x4e00; // one made glyph for each ideograph from there on
constexpr int characterCount = 40;
constexpr double scale = 40; // of the made book: other characters are as far away as in a learnt one

// Strokes of a kind that no font has, but always the same ones for the same character; some of them leave a
// white strip from top to bottom, as between the halves of many ideographs.
cv::Mat glyphOf(char32_t character, int side = glyphSide, int ink = 0, int weight = 2)
{
    cv::RNG any(static_cast<unsigned>(character) * 77U + 5U);
    cv::Mat large(4 * side, 4 * side, CV_8UC1, cv::Scalar(255));
    const bool isHalved = character % 3 == 0;
    const auto x = [&](double share) {
        if (isHalved)
            share = share < 0.5 ? share * 0.8 : 0.6 + (share - 0.5) * 0.8;
        return cvRound((0.04 + 0.92 * share) * large.cols);
    };
    const auto y = [&](double share) { return cvRound((0.04 + 0.92 * share) * large.rows); };
    for (int i = 0; i < 7; ++i) {
        const double at = any.uniform(0.0, 1.0), from = any.uniform(0.0, 0.4), to = any.uniform(0.6, 1.0);
        const double half = at < 0.5 ? 0 : 0.5; // across, within one half
        if (i % 2 == 0)
            cv::line(large, {x(at), y(from)}, {x(at), y(to)}, ink, 4 * weight * side / glyphSide);
        else
            cv::line(large,
                     {x(half), y(at)},
                     {x(half + 0.49), y(any.uniform(0.0, 1.0))},
                     ink,
                     4 * weight * side / glyphSide);
    }
    cv::line(large, {x(0), y(0)}, {x(0), y(0.3)}, ink, 4 * weight * side / glyphSide);
    cv::line(large, {x(1), y(0.7)}, {x(1), y(1)}, ink, 4 * weight * side / glyphSide);
    cv::Mat glyph;
    cv::resize(large, glyph, {side, side}, 0, 0, cv::INTER_AREA);
    return glyph;
}

/// A line of made glyphs on squares, with full stops where U'。' stands: little ink at the foot, and white.
struct Print
{
    cv::Mat picture;
    std::vector<cv::Rect> inks; ///< of the characters

    explicit Print(const std::u32string& text, int left = 60)
        : picture(
              lineHeight + 40, left + 60 + pitch * static_cast<int>(text.size()), CV_8UC1, cv::Scalar(255))
    {
        int x = left;
        for (const char32_t c : text) {
            cv::Rect box(x + (pitch - glyphSide) / 2, 22, glyphSide, glyphSide);
            if (c == U'。') {
                box = {x + 6, 44, 8, 8};
                cv::circle(picture, {box.x + 4, box.y + 4}, 3, 0, 2);
            } else {
                glyphOf(c).copyTo(picture(box));
            }
            inks.push_back(box);
            x += pitch;
        }
    }
};

std::u32string textOf(std::initializer_list<int> numbers)
{
    std::u32string text;
    for (const int n : numbers)
        text += n < 0 ? U'。' : firstCharacter + static_cast<char32_t>(n);
    return text;
}

std::vector<RoughCharacter> roughly(const Print& print, const std::u32string& text)
{
    std::vector<RoughCharacter> rough;
    for (size_t i = 0; i < print.inks.size(); ++i) {
        // Half a character wrong, now to the left and now to the right.
        const double off = pitch * 0.5 * ((i * 7) % 5 - 2.0) / 2;
        rough.push_back({print.inks[i].x + print.inks[i].width / 2.0 + off,
                         isIdeographic(text[i]) && text[i] != U'。',
                         false});
    }
    return rough;
}

// Most of a glyph's width lies in its own cell.
bool holds(const cv::Rect& cell, const cv::Rect& ink)
{
    const int from = std::max(cell.x, ink.x), to = std::min(cell.br().x, ink.br().x);
    return to - from >= ink.width - 3;
}

/// A book of the made glyphs: each is its own mean, and nothing is projected.
GlyphBook bookOf(const std::string& path)
{
    cv::Mat projection = cv::Mat::eye(glyphFeatures, glyphFeatures, CV_32F) * scale;
    projection.push_back(cv::Mat(1, glyphFeatures, CV_32F, cv::Scalar(0)));
    cv::Mat means;
    std::vector<char32_t> characters;
    for (int i = 0; i < characterCount; ++i) {
        characters.push_back(firstCharacter + static_cast<char32_t>(i));
        means.push_back(cv::Mat(glyphFeaturesOf(glyphOf(characters.back())) * scale));
    }
    EXPECT_TRUE(GlyphBook::save(path, projection, means, characters));
    auto book = GlyphBook::load(path);
    EXPECT_TRUE(book);
    return book ? *book : GlyphBook();
}

class GlyphFiles : public ::testing::Test
{
protected:
    void SetUp() override { std::filesystem::create_directories(folder_); }
    void TearDown() override { std::filesystem::remove_all(folder_); }
    std::string path(const char* name = "made.glyphs") const { return (folder_ / name).string(); }

private:
    std::filesystem::path folder_ =
        std::filesystem::temp_directory_path() /
        ("glyphs-" + std::string(::testing::UnitTest::GetInstance()->current_test_info()->name()));
};

/// The line as the recogniser tells it: words of one character, in the places of the print.
ReadPage pageOf(const Print& print, const std::u32string& read, const std::vector<float>& confidences)
{
    ReadLine line;
    for (size_t i = 0; i < read.size(); ++i) {
        const cv::Rect& ink = print.inks[std::min(i, print.inks.size() - 1)];
        line.words.push_back({toUtf8({read[i]}),
                              {ink.x + 8, 20, ink.br().x + 8, 20 + lineHeight},
                              confidences[i],
                              0,
                              {},
                              false});
    }
    line.box = {print.inks.front().x, 20, print.inks.back().br().x, 20 + lineHeight};
    ReadPage page;
    page.language = "chi_sim";
    page.blocks = {{line}};
    return page;
}

std::u32string textOf(const ReadPage& page)
{
    std::u32string text;
    for (const ReadWord& word : page.blocks.front().front().words)
        text += fromUtf8(word.text);
    return text;
}

bool never()
{
    return false;
}

} // namespace

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

TEST(CharacterCells, HoldTheirCharactersWhateverTheRecogniserSays)
{
    const std::u32string text = textOf({3, 1, 4, 12, 5, -1, 9, 2, 6, 15, 35, -1, 8, 9, 7, 33, 21, 30});
    const Print print(text);
    const std::vector<cv::Rect> cells = characterCells(print.picture, roughly(print, text));
    ASSERT_EQ(cells.size(), text.size());
    for (size_t i = 0; i < cells.size(); ++i) {
        EXPECT_TRUE(text[i] == U'。' || holds(cells[i], print.inks[i])) << i << cells[i] << print.inks[i];
        EXPECT_EQ(cells[i].height, print.picture.rows);
        EXPECT_TRUE(i == 0 || cells[i].x >= cells[i - 1].br().x);
    }
}

TEST(CharacterCells, OneTooManyMovesNoOtherAndOneTooFewOnlyItsNeighbours)
{
    const std::u32string text = textOf({3, 1, 4, 12, 5, 10, 9, 2, 6, 15, 35, 11, 8});
    const Print print(text);
    std::vector<RoughCharacter> rough = roughly(print, text);
    const RoughCharacter sixth = rough[5];
    rough.insert(rough.begin() + 6, {sixth.middle + 10, true, true});
    std::vector<cv::Rect> cells = characterCells(print.picture, rough);
    ASSERT_EQ(cells.size(), text.size() + 1);
    EXPECT_EQ((cells[5].width == 0) + (cells[6].width == 0), 1) << "there is one place for the two";
    for (size_t i = 0; i < text.size(); ++i)
        EXPECT_TRUE(i == 5 || holds(cells[i < 5 ? i : i + 1], print.inks[i])) << i;

    rough = roughly(print, text);
    rough.erase(rough.begin() + 5);
    cells = characterCells(print.picture, rough);
    ASSERT_EQ(cells.size(), text.size() - 1);
    for (size_t i = 0; i < text.size(); ++i)
        EXPECT_TRUE((i >= 4 && i <= 6) || holds(cells[i < 5 ? i : i - 1], print.inks[i]))
            << i << cells[i < 5 ? i : i - 1] << print.inks[i];
}

TEST(CharacterCells, NoPitchNoCells)
{
    const Print print(textOf({1, 2, 3}));
    EXPECT_TRUE(characterCells(print.picture, {}).empty());
    EXPECT_TRUE(characterCells({}, {{1, true, false}, {2, true, false}, {3, true, false}}).empty());
    EXPECT_TRUE(
        characterCells(print.picture,
                       {{80, true, false}, {120, false, false}, {160, true, false}, {170, false, false}})
            .empty());
    for (const cv::Size size : {cv::Size(1, 1), cv::Size(2000, 1), cv::Size(1, 500), cv::Size(300, 40)}) {
        for (const int level : {0, 255}) {
            const cv::Mat line(size, CV_8UC1, cv::Scalar(level));
            const auto cells = characterCells(line,
                                              {{-500, true, false},
                                               {-460, true, false},
                                               {20, true, false},
                                               {60, true, false},
                                               {5000, true, false},
                                               {5040, true, false}});
            for (const cv::Rect& cell : cells)
                EXPECT_TRUE(cell.x >= 0 && cell.br().x <= size.width && cell.width >= 0) << size << cell;
        }
    }
}

TEST_F(GlyphFiles, ADoubtfulCharacterIsPutRightByItsShape)
{
    const GlyphBook book = bookOf(path());
    const std::u32string text = textOf({3, 1, 4, 12, 5, -1, 9, 2, 6, 15, 35});
    Print print(text);
    cv::GaussianBlur(print.picture, print.picture, {}, 1.0); // no look is the same as another
    std::u32string read = text;
    read[3] = firstCharacter + 30;
    read[8] = firstCharacter + 31;
    std::vector<float> confidences(text.size(), 95);
    confidences[3] = confidences[0] = confidences[10] = 40; // wrong, and right at both ends
    ReadPage page = pageOf(print, read, confidences);
    checkGlyphs(page, print.picture, book, never);
    std::u32string expected = text;
    expected[8] = read[8]; // nobody doubted it
    EXPECT_EQ(toUtf8(textOf(page)), toUtf8(expected));
    for (const size_t i : {size_t(0), size_t(3), size_t(10)})
        EXPECT_GE(page.blocks[0][0].words[i].confidence, 90) << "looks like what it is now: " << i;
}

TEST_F(GlyphFiles, NothingIsTouchedWhereTheCutsOrTheShapesTellNothing)
{
    const GlyphBook book = bookOf(path());
    const std::u32string text = textOf({3, 1, 4, 12, 5, 10, 9, 2, 6, 15, 35});
    const Print print(text);
    // All others say that something else stands there: the cuts may be wrong.
    std::u32string read = text;
    for (size_t i = 0; i < read.size(); ++i)
        read[i] = firstCharacter + static_cast<char32_t>((i + 20) % characterCount);
    std::vector<float> confidences(text.size(), 95);
    confidences[5] = 40;
    ReadPage page = pageOf(print, read, confidences);
    checkGlyphs(page, print.picture, book, never);
    EXPECT_EQ(toUtf8(textOf(page)), toUtf8(read));
    EXPECT_EQ(page.blocks[0][0].words[5].confidence, 40);

    // Half of them do.
    read = text;
    for (const size_t i : {size_t(2), size_t(4), size_t(7)})
        read[i] = firstCharacter + 25;
    read[5] = firstCharacter + 30;
    page = pageOf(print, read, confidences);
    checkGlyphs(page, print.picture, book, never);
    EXPECT_EQ(toUtf8(textOf(page)), toUtf8(read));

    // What is nearest is not near.
    Print spoilt(text);
    cv::circle(spoilt.picture, {spoilt.inks[5].x + 10, spoilt.inks[5].y + 10}, 9, 0, cv::FILLED);
    read = text;
    read[5] = firstCharacter + 30;
    page = pageOf(spoilt, read, confidences);
    checkGlyphs(page, spoilt.picture, book, never);
    EXPECT_EQ(toUtf8(textOf(page)), toUtf8(read));

    // A shape that the book does not have.
    Print blot(text);
    blot.picture(blot.inks[5]).setTo(255);
    cv::circle(blot.picture, {blot.inks[5].x + 16, blot.inks[5].y + 16}, 15, 0, cv::FILLED);
    page = pageOf(blot, text, confidences);
    checkGlyphs(page, blot.picture, book, never);
    EXPECT_EQ(toUtf8(textOf(page)), toUtf8(text));
    EXPECT_EQ(page.blocks[0][0].words[5].confidence, 40);

    // No time left; and a line with places of another picture.
    read = text;
    read[5] = firstCharacter + 30;
    page = pageOf(print, read, confidences);
    checkGlyphs(page, print.picture, book, [] { return true; });
    EXPECT_EQ(toUtf8(textOf(page)), toUtf8(read));
    for (ReadWord& word : page.blocks[0][0].words)
        word.frame = 1;
    checkGlyphs(page, print.picture, book, never);
    EXPECT_EQ(toUtf8(textOf(page)), toUtf8(read));
}

TEST_F(GlyphFiles, ACharacterThatIsNotThereGoes)
{
    const GlyphBook book = bookOf(path());
    const std::u32string text = textOf({3, 1, 4, 12, 5, 10, 9, 2, 6, 15, 35, 11, 8});
    const Print print(text);
    ReadPage page = pageOf(print, text, std::vector<float>(text.size(), 95));
    std::vector<ReadWord>& words = page.blocks[0][0].words;
    ReadWord extra = words[6];
    extra.text = toUtf8({firstCharacter + 30});
    extra.box.left -= 15;
    extra.box.right -= 15;
    extra.confidence = 20;
    words.insert(words.begin() + 6, extra);
    checkGlyphs(page, print.picture, book, never);
    EXPECT_EQ(toUtf8(textOf(page)), toUtf8(text));
}

TEST_F(GlyphFiles, ASignThatWasReadTwiceStaysASign)
{
    const GlyphBook book = bookOf(path());
    const std::u32string text = textOf({3, 1, 4, 12, 5, -1, 9, 2, 6, 15, 35});
    const Print print(text);
    for (const size_t at : {size_t(5), size_t(6)}) { // before and behind it
        ReadPage page = pageOf(print, text, std::vector<float>(text.size(), 95));
        std::vector<ReadWord>& words = page.blocks[0][0].words;
        ReadWord extra = words[5];
        extra.text = toUtf8({firstCharacter + 30});
        extra.confidence = 20;
        words.insert(words.begin() + static_cast<std::ptrdiff_t>(at), extra);
        checkGlyphs(page, print.picture, book, never);
        EXPECT_EQ(toUtf8(textOf(page)), toUtf8(text));
    }
}
