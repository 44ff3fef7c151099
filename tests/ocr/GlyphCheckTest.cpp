#include "GlyphCheck.h"
#include "TestGlyphs.h"
#include "Unicode.h"

#include <opencv2/imgproc.hpp>

using namespace mirvak;
using namespace testGlyphs;

namespace {

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

// The cut of one that stands close to a sign takes that in, so it looks like nothing any more; but still most
// like itself.
TEST_F(GlyphFiles, ACharacterBesideASignIsNoSign)
{
    const GlyphBook book = bookOf(path(), 2 * scale);
    const std::u32string text = textOf({3, 1, 4, 12, 5, -1, 9, 2, 6, 15, 35});
    Print print(text);
    cv::circle(print.picture, print.inks[4].tl() + cv::Point(24, 0), 7, 0, cv::FILLED);
    std::vector<float> confidences(text.size(), 95);
    confidences[4] = 40;
    ReadPage page = pageOf(print, text, confidences);
    checkGlyphs(page, print.picture, book, never);
    EXPECT_EQ(toUtf8(textOf(page)), toUtf8(text));
}
