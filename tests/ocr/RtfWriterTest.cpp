#include "RtfWriter.h"

#include "RtfText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using mirvak::Document;
using mirvak::Paragraph;
using testing::HasSubstr;

namespace {

Document documentOf(const std::vector<std::u32string>& texts)
{
    Document document;
    document.language = "eng";
    for (const std::u32string& text : texts) {
        document.paragraphs.emplace_back();
        document.paragraphs.back().text = text;
    }
    return document;
}

/// The body of a document of one paragraph, without the words that set it up.
std::string written(const std::u32string& text)
{
    const std::string rtf = mirvak::toRtf(documentOf({text}));
    const size_t from = rtf.rfind("\\fs22 ") + 6;
    return rtf.substr(from, rtf.rfind("\\par") - from);
}

} // namespace

TEST(RtfWriter, EscapesWhatIsNotPlainText)
{
    EXPECT_EQ(written(U"a\\b {c}"), "a\\\\b \\{c\\}");
    EXPECT_EQ(written(U"one\ttwo"), "one\\tab two");
    EXPECT_EQ(written(U"é"), "\\u233?");
    EXPECT_EQ(written(U"Ж5"), "\\u1046?5") << "a digit behind the number is no part of it";
    EXPECT_EQ(written(U"\u7fff\u8000"), "\\f1 \\u32767?\\u-32768?") << "numbers are signed";
    EXPECT_EQ(written(U"\U0001f600"), "\\u-10179?\\u-8704?") << "beyond 16 bits: two halves";
    EXPECT_EQ(written(U"\uffff"), "\\u-1?");
    EXPECT_EQ(written(U"a\u0007\u0085\nb"), "ab") << "control characters are no text";
}

TEST(RtfWriter, IdeographsHaveAFontOfTheirOwn)
{
    EXPECT_EQ(written(U"Qt 中 x"), "Qt \\f1 \\u20013? \\f0 x");
}

TEST(RtfWriter, AnyTextComesBack)
{
    std::u32string all;
    for (char32_t c = 0x20; c < 0x30000; c += c < 0x3000 ? 1 : 97) {
        const bool isText = (c < 0x7f || c >= 0xa0) && !(c >= 0xd800 && c < 0xe000);
        if (isText)
            all += c;
    }
    const auto text = rtfText(mirvak::toRtf(documentOf({all, U"", U"\tend{"})));
    ASSERT_TRUE(text.has_value());
    EXPECT_EQ(*text, all + U"\n\n\tend{\n");
}

TEST(RtfWriter, WritesTheShapeOfThePageAndItsParagraphs)
{
    Document document = documentOf({U"Head", U"row", U"body"});
    document.language = "rus";
    document.paperWidth = 16838;
    document.paperHeight = 11906;
    document.marginLeft = 1200;
    document.marginTop = 1300;
    document.marginRight = 1400;
    document.marginBottom = 1500;
    Paragraph& head = document.paragraphs[0];
    head.headingLevel = 2;
    head.alignment = mirvak::Alignment::centre;
    head.halfPoints = 33;
    document.paragraphs[1].tabs = {{2000, false}, {5000, true}};
    document.paragraphs[2].leftIndent = 300;
    document.paragraphs[2].firstIndent = -400;
    document.paragraphs[2].spaceBefore = 120;
    const std::string rtf = mirvak::toRtf(document);
    EXPECT_THAT(rtf, HasSubstr("\\deflang1049"));
    EXPECT_THAT(rtf, HasSubstr("\\paperw16838\\paperh11906\\margl1200\\margt1300\\margr1400\\margb1500"));
    EXPECT_THAT(rtf, HasSubstr("\\landscape"));
    EXPECT_THAT(mirvak::toRtf(documentOf({U"standing"})), testing::Not(HasSubstr("\\landscape")));
    EXPECT_THAT(rtf, HasSubstr("\\s2\\outlinelevel1\\keepn\\qc"));
    EXPECT_THAT(rtf, HasSubstr("\\b\\fs33 Head"));
    EXPECT_THAT(rtf, HasSubstr("\\tx2000\\tqr\\tx5000"));
    EXPECT_THAT(rtf, HasSubstr("\\li300\\fi-400\\sb120"));
}

TEST(RtfWriter, HighlightsTheUnsureWordsAndNothingElse)
{
    Document document = documentOf({U"a {b\\} 中x\tlast", U"next", U"first\tend"});
    document.paragraphs[0].unsure = {{2, 6}, {7, 9}, {10, 14}}; // a font changes within, a tab lies before
    document.paragraphs[2].unsure = {{0, 5}};
    const std::string rtf = mirvak::toRtf(document), plain = mirvak::toRtf(document, mirvak::Unsure::plain);
    EXPECT_EQ(rtfHighlighted(rtf), U"{b\\}\n中x\nlast\nfirst\n")
        << "none goes on to the next paragraph or tab";
    EXPECT_EQ(rtfText(rtf), U"a {b\\} 中x\tlast\nnext\nfirst\tend\n");
    EXPECT_THAT(rtf, HasSubstr("{\\colortbl;\\red255\\green255\\blue0;}")) << "yellow";
    EXPECT_THAT(rtf, HasSubstr("last\\highlight0 \\par")) << "the paragraph's end is not coloured";
    EXPECT_EQ(rtfText(plain), rtfText(rtf));
    EXPECT_EQ(rtfHighlighted(plain), U"");
    EXPECT_THAT(plain, testing::Not(HasSubstr("highlight")));
    EXPECT_EQ(mirvak::toRtf(documentOf({U"sure"})).find("\\highlight"), std::string::npos);
}
