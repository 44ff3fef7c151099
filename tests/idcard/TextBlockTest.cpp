#include "TextBlock.h"

#include "SimulatedModule.h"

#include <gtest/gtest.h>

using namespace idcard;

namespace {

std::string told(const Bytes& block)
{
    const TextBlock text = decodeTextBlock(block).value();
    std::string all = std::to_string(int(text.kind)) + ":";
    for (const auto& [field, value] : text.texts)
        all += std::to_string(int(field)) + "=" + value + ";";
    return all;
}

} // namespace

TEST(TextBlock, EachKindOfCardHasItsOwnFields)
{
    const std::initializer_list<std::pair<size_t, std::u16string>> common{{0, u"张样本"},
                                                                          {30, u"2"},
                                                                          {32, u"01"},
                                                                          {36, u"19900101"},
                                                                          {52, u"示例路 1号"},
                                                                          {122, u"00000019900101002X"},
                                                                          {158, u"样本市公安局"},
                                                                          {188, u"20200101"},
                                                                          {204, u"长期"},
                                                                          {220, u"H12345678"},
                                                                          {238, u"02"}};
    Bytes block = textBlock(common);
    const std::string rest = "4=19900101;5=示例路 1号;6=00000019900101002X;7=样本市公安局;8=20200101;9=长期;";
    EXPECT_EQ(told(block), "0:0=张样本;2=2;3=01;" + rest);
    block[248] = 'J';
    EXPECT_EQ(told(block), "2:0=张样本;2=2;" + rest + "10=H12345678;11=02;13=J;");
    EXPECT_EQ(told(textBlock({{0, u"SPECIMEN, ALEX"},
                              {120, u"1"},
                              {122, u"XXX000080010100"},
                              {152, u"XXX"},
                              {158, u"史"},
                              {188, u"20220601"},
                              {204, u"20320601"},
                              {220, u"19800101"},
                              {236, u"01"},
                              {240, u"1500"},
                              {248, u"I"}})),
              "1:0=SPECIMEN, "
              "ALEX;1=史;2=1;3=XXX;4=19800101;6=XXX000080010100;7=1500;8=20220601;9=20320601;12=01;13=I;");
}

TEST(TextBlock, BrokenCharactersStayInTheirField)
{
    // A name as wide as its field; half a pair whose other half would lie in the next field.
    const std::u16string odd{0xD83D, 0xDE00, 0xD83D, u'a', 0xDE00, u'\r', u'\n', 0, u'é', 0x85};
    const Bytes block = textBlock(
        {{0, u"一二三四五六七八九十一二三四五"}, {30, u"7"}, {52, odd}, {120, {0xD83D}}, {122, {0xDE00}}});
    EXPECT_EQ(told(block),
              "0:0=一二三四五六七八九十一二三四五;2=7;3=;4=;5=😀\uFFFDa\uFFFD   é" + std::string(25, ' ') +
                  "\uFFFD;6=\uFFFD;7=;8=;9=;");
    for (const size_t bytes : {size_t(0), size_t(255), size_t(257)})
        EXPECT_FALSE(decodeTextBlock(Bytes(bytes)));
}
