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
    Bytes block =
        textBlock(wide(u"张样本", 15) + u"20119900101" + wide(u"示例路 1号", 35) + u"00000019900101002X" +
                  wide(u"样本市公安局", 15) + u"20200101" + wide(u"长期", 8) + u"H1234567802");
    const std::string rest = "4=19900101;5=示例路 1号;6=00000019900101002X;7=样本市公安局;8=20200101;9=长期;";
    EXPECT_EQ(told(block), "0:0=张样本;2=2;3=01;" + rest);
    block[248] = 'J';
    EXPECT_EQ(told(block), "2:0=张样本;2=2;" + rest + "10=H12345678;11=02;13=J;");
    block = textBlock(wide(u"SPECIMEN, ALEX", 60) + u"1XXX000080010100XXX" + wide(u"史", 15) +
                      u"202206012032060119800101011500I");
    EXPECT_EQ(told(block),
              "1:0=SPECIMEN, ALEX;1=史;2=1;3=XXX;4=19800101;6=XXX000080010100;7=1500;8=20220601;9=20320601;"
              "12=01;13=I;");
}

TEST(TextBlock, BrokenCharactersStayInTheirField)
{
    // A name as wide as its field; half a pair whose other half lies in the next field.
    const std::u16string odd{0xD83D, 0xDE00, 0xD83D, u'a', 0xDE00, u'\r', u'\n', 0, u'é', 0x85};
    const std::u16string halves{0xD83D, 0xDE00};
    EXPECT_EQ(told(textBlock(u"一二三四五六七八九十一二三四五7          " + wide(odd, 34) + halves)),
              "0:0=一二三四五六七八九十一二三四五;2=7;3=;4=;5=😀\uFFFDa\uFFFD   é" + std::string(25, ' ') +
                  "\uFFFD;6=\uFFFD;7=;8=;9=;");
    for (const size_t bytes : {size_t(0), size_t(255), size_t(257)})
        EXPECT_FALSE(decodeTextBlock(Bytes(bytes)));
}
