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
    return mirvak::joinWords(all).text();
}

std::u32string lines(const std::vector<std::u32string>& all, const std::set<std::string>& dictionary = {})
{
    mirvak::MarkedText paragraph;
    for (const std::u32string& line : all)
        appendLine(
            paragraph, {line, false}, [&](const std::string& word) { return dictionary.count(word) > 0; });
    return paragraph.text();
}

/// The lines as one paragraph, in brackets what is marked; words that begin with "?" are unsure.
std::string marked(const std::vector<std::vector<std::string>>& all)
{
    mirvak::MarkedText paragraph;
    for (const auto& line : all) {
        std::vector<ReadWord> read;
        for (const std::string& word : line) {
            read.push_back({word.substr(word[0] == '?' ? 1 : 0), {}, 90});
            read.back().isUnsure = word[0] == '?';
        }
        appendLine(
            paragraph, mirvak::joinWords(read), [](const std::string& word) { return word == "thirty-one"; });
    }
    std::u32string text = paragraph.text();
    const std::vector<mirvak::Span> spans = paragraph.spans();
    for (auto span = spans.rbegin(); span != spans.rend(); ++span) {
        text.insert(span->to, U"]");
        text.insert(span->from, U"[");
    }
    return mirvak::toUtf8(text);
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
    for (const char32_t* small : {U"łodz", U"ńska", U"źle", U"že", U"ěje", U"őrz"})
        EXPECT_EQ(lines({U"za-", small}), U"za" + std::u32string(small)) << mirvak::toUtf8(small);
    for (const char32_t* capital : {U"Łodz", U"Ńska", U"Źle", U"Že", U"Ěje", U"Őrz"})
        EXPECT_EQ(lines({U"za-", capital}), U"za-" + std::u32string(capital)) << mirvak::toUtf8(capital);
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
    EXPECT_EQ(mirvak::fromUtf8("\xe0\x80\xaf"), U"\ufffd\ufffd\ufffd") << "longer than needed";
    EXPECT_EQ(mirvak::fromUtf8("\xc0\x80\xed\xa0\x80"), std::u32string(5, U'\ufffd'))
        << "too long, half a pair";
    const std::u32string all = U"~\u0080\u07ff\u0800\uffff\U00010000\U0010ffff";
    EXPECT_EQ(mirvak::fromUtf8(mirvak::toUtf8(all)), all);
}

TEST(Unicode, EveryCapitalHasItsSmallLetter)
{
    const std::u32string capitals = U"AZÀÞĀĶĹŁŇŊŶŹŽǍΑЀЯ", small = U"azàþāķĺłňŋŷźžǎαѐя";
    for (size_t i = 0; i < capitals.size(); ++i) {
        EXPECT_EQ(mirvak::lowercase(capitals[i]), small[i]) << mirvak::toUtf8({capitals[i]});
        EXPECT_EQ(mirvak::lowercase(small[i]), small[i]) << mirvak::toUtf8({small[i]});
        EXPECT_TRUE(mirvak::isLowercase(small[i]) && !mirvak::isLowercase(capitals[i]))
            << mirvak::toUtf8({small[i]});
    }
}

TEST(LineJoin, UnsureWordsAreMarkedWithoutTheSpacesAroundThem)
{
    EXPECT_EQ(marked({{"?one", "two", "?three", "?four"}, {"?five"}}), "[one] two [three] [four] [five]");
    EXPECT_EQ(marked({{"他", "?说", ":", "“", "?好", "?的", "”", "?的"}}), "他[说]：“[好的]”[的]")
        << "where spaces have gone";
    EXPECT_EQ(marked({{"?exam-"}, {"ple", "it", "?so-"}, {"?called"}}), "[example] it [socalled]");
    EXPECT_EQ(marked({{"an", "exam-"}, {"?ple", "is"}}), "an [example] is") << "both halves";
    EXPECT_EQ(marked({{"of", "?thirty-"}, {"one", "is"}}), "of [thirty-one] is");
}
