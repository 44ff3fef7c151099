#include "TextBlock.h"

#include "SimulatedModule.h"

#include <gtest/gtest.h>

using namespace idcard;

namespace {

std::string told(const Bytes& block)
{
    std::string all;
    const std::optional<TextBlock> text = decodeTextBlock(block);
    for (const auto& [field, value] : text.value().texts)
        all += std::to_string(int(field)) + "=" + value + ";";
    return all;
}

} // namespace

TEST(TextBlock, EachKindOfCardHasItsOwnFields)
{
    const Bytes resident = textBlock({{0, u"张样本"},
                                      {30, u"2"},
                                      {32, u"01"},
                                      {36, u"19900101"},
                                      {52, u"示例路 1号"},
                                      {122, u"00000019900101002X"},
                                      {158, u"样本市公安局"},
                                      {188, u"20200101"},
                                      {204, u"长期"}});
    EXPECT_EQ(decodeTextBlock(resident)->kind, CardKind::resident);
    EXPECT_EQ(
        told(resident),
        "0=张样本;2=2;3=01;4=19900101;5=示例路 1号;6=00000019900101002X;7=样本市公安局;8=20200101;9=长期;");
    const Bytes residence = textBlock(
        {{0, u"陈"}, {30, u"1"}, {204, u"20260501"}, {220, u"H12345678"}, {238, u"02"}, {248, u"J"}});
    EXPECT_EQ(decodeTextBlock(residence)->kind, CardKind::residence);
    EXPECT_EQ(told(residence), "0=陈;2=1;4=;5=;6=;7=;8=;9=20260501;10=H12345678;11=02;13=J;");
    const Bytes foreign = textBlock({{0, u"SPECIMEN, ALEX"},
                                     {120, u"1"},
                                     {122, u"XXX000080010100"},
                                     {152, u"XXX"},
                                     {158, u"史"},
                                     {188, u"20220601"},
                                     {204, u"20320601"},
                                     {220, u"19800101"},
                                     {236, u"01"},
                                     {240, u"1500"},
                                     {248, u"I"}});
    EXPECT_EQ(decodeTextBlock(foreign)->kind, CardKind::foreign);
    EXPECT_EQ(told(foreign),
              "0=SPECIMEN, "
              "ALEX;1=史;2=1;3=XXX;4=19800101;6=XXX000080010100;7=1500;8=20220601;9=20320601;12=01;13=I;");
}

TEST(TextBlock, BrokenCharactersStayInTheirField)
{
    const Bytes block =
        textBlock({{0, u"一二三四五六七八九十一二三四五"}, // as wide as the field
                   {30, u"7"},
                   {52, std::u16string{0xD83D, 0xDE00, 0xD83D, u'a', 0xDE00, u'\r', u'\n', 0, u'é', 0x85}},
                   {120, std::u16string{0xD83D}}, // its other half would lie in the next field
                   {122, std::u16string{0xDE00}}});
    Texts texts = decodeTextBlock(block)->texts;
    EXPECT_EQ(texts[Field::name], "一二三四五六七八九十一二三四五");
    EXPECT_EQ(texts[Field::gender], "7");
    EXPECT_EQ(texts[Field::address], "😀\uFFFDa\uFFFD   é" + std::string(25, ' ') + "\uFFFD");
    EXPECT_EQ(texts[Field::number], "\uFFFD");
    for (const size_t bytes : {size_t(0), size_t(255), size_t(257)})
        EXPECT_FALSE(decodeTextBlock(Bytes(bytes)));
}
