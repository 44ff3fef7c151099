#include "LineJoin.h"

#include "Unicode.h"

#include <gtest/gtest.h>

#include <set>

using mirvak::appendLine;
using mirvak::ReadWord;

namespace {

std::u32string words(const std::vector<std::string>& texts)
{
    std::vector<ReadWord> all;
    for (const std::string& text : texts)
        all.push_back({text, {}, 90});
    return mirvak::joinWords(all);
}

std::u32string lines(const std::vector<std::u32string>& all, const std::set<std::string>& dictionary = {})
{
    std::u32string paragraph;
    for (const std::u32string& line : all)
        appendLine(paragraph, line, [&](const std::string& word) { return dictionary.count(word) > 0; });
    return paragraph;
}

} // namespace

TEST(LineJoin, IdeographsStandWithoutSpaces)
{
    EXPECT_EQ(words({"two", "words", "."}), U"two words .");
    EXPECT_EQ(words({"本", "软件", "支持", "Windows", "10", "系统"}), U"本软件支持Windows 10系统");
    EXPECT_EQ(words({"他", "说", ":", "“", "好", "”", "的"}), U"他说：“好”的");
    EXPECT_EQ(lines({U"第一行", U"第二行"}), U"第一行第二行");
    EXPECT_EQ(lines({U"first", U"second"}), U"first second");
}

TEST(LineJoin, PunctuationBehindIdeographsIsFullWidth)
{
    EXPECT_EQ(words({"时间", ":", "12:30", ",", "(", "明天", ")"}), U"时间：12:30 ,（明天）");
    EXPECT_EQ(words({"a,", "b;", "c"}), U"a, b; c");
}

TEST(LineJoin, AHyphenThatBreaksAWordGoes)
{
    EXPECT_EQ(lines({U"the recog-", U"nised text"}), U"the recognised text");
    EXPECT_EQ(lines({U"распо-", U"знавание"}), U"распознавание");
    EXPECT_EQ(lines({U"soft\u00ad", U"ware"}), U"software");
    EXPECT_EQ(lines({U"note\u00ad", U"book"}, {"note", "book"}), U"notebook")
        << "it says itself that it goes";
}

TEST(LineJoin, AHyphenOfTheWordItselfStays)
{
    const std::set<std::string> dictionary{"thirty", "one", "recognised"};
    EXPECT_EQ(lines({U"for thirty-", U"one years"}, dictionary), U"for thirty-one years");
    EXPECT_EQ(lines({U"recog-", U"nised"}, dictionary), U"recognised");
    EXPECT_EQ(lines({U"North-", U"South"}), U"North-South") << "a capital begins no second half";
    EXPECT_EQ(lines({U"Санкт-", U"Петербург"}), U"Санкт-Петербург");
    EXPECT_EQ(lines({U"co-", U"operate"}, {"co-operate", "operate"}), U"co-operate")
        << "only together a word";
    EXPECT_EQ(lines({U"mother-in-", U"law came"}, {"in", "law"}), U"mother-in-law came");
    EXPECT_EQ(lines({U"1990-", U"95"}), U"1990-95");
    EXPECT_EQ(lines({U"he said -", U"nothing"}), U"he said - nothing") << "a dash is none";
    EXPECT_EQ(lines({U"-", U"first point"}), U"- first point");
}

TEST(Unicode, BrokenBytesBecomeReplacements)
{
    EXPECT_EQ(mirvak::fromUtf8("aÄ中😀"), U"aÄ中😀");
    EXPECT_EQ(mirvak::fromUtf8("a\xff\xc3z"), U"a\ufffd\ufffdz");
    EXPECT_EQ(mirvak::fromUtf8("\xe4\xb8"), U"\ufffd\ufffd") << "cut short";
    EXPECT_EQ(mirvak::fromUtf8("\xc0\x80\xed\xa0\x80"), std::u32string(5, U'\ufffd'))
        << "too long, half a pair";
    const std::u32string all = U"~\u0080\u07ff\u0800\uffff\U00010000\U0010ffff";
    EXPECT_EQ(mirvak::fromUtf8(mirvak::toUtf8(all)), all);
}
