// What stands on a card in codes or in pieces.
#include "IdCardReader.h"

#include <gtest/gtest.h>

namespace {

QStringList split(const char* text, char separator)
{
    QByteArray buffer(text);
    char* parts[8];
    int count = -1;
    IdCardReader::cardsplit(buffer.data(), separator, parts, count);
    QStringList pieces;
    for (int i = 0; i < count; ++i)
        pieces << QString::fromUtf8(parts[i]);
    return pieces;
}

} // namespace

TEST(CardTexts, CodesBecomeWords)
{
    const ReadZktCard card;
    const std::pair<const char*, const char*> genders[] = {{"1", "男"},
                                                           {"2", "女"},
                                                           {"0", "未知的性别"},
                                                           {"", "未知的性别"},
                                                           {"x", "未知的性别"},
                                                           {"9", "未说明的性别"},
                                                           {"7", "未说明的性别"}};
    for (const auto& [code, word] : genders)
        EXPECT_EQ(card.readgender(code), QString::fromUtf8(word)) << code;
    const std::pair<const char*, const char*> nations[] = {{"01", "汉族"},
                                                           {"5", "维吾尔族"},
                                                           {"29", "柯尔克孜族"},
                                                           {"43", "乌孜别克族"},
                                                           {"56", "基诺族"},
                                                           {"97", "未定族称人口"},
                                                           {"98", "入籍"},
                                                           {"0", ""},
                                                           {"57", ""},
                                                           {"58", ""},
                                                           {"96", ""},
                                                           {"99", ""},
                                                           {"-1", ""},
                                                           {"", ""}};
    for (const auto& [code, word] : nations)
        EXPECT_EQ(card.readnation(code), QString::fromUtf8(word)) << code;
}

TEST(CardTexts, ABufferIsSplitInPlace)
{
    const QStringList three{QStringLiteral("a"), QString(), QStringLiteral("b")};
    EXPECT_EQ(split("a||b", '|'), three);
    EXPECT_EQ(split("a||b|", '|'), three) << "an empty last piece";
    EXPECT_EQ(split("a||b\rc|d", '|'), three);
    EXPECT_EQ(split("a|\r", '|'), (QStringList{three[0], QString()})) << "but ended by a carriage return";
    EXPECT_EQ(split("", '|'), QStringList());
}

TEST(CardTexts, Base64HasItsLinesAndItsQuirk)
{
    const std::pair<std::string, std::string> pairs[] = {{"", ""},
                                                         {"M", "TQ=="},
                                                         {"Ma", "TWE="},
                                                         {"Man", "TWFu"},
                                                         {std::string("\0\xFF\xFB\xEF", 4), "AP/77w=="}};
    int length = -1;
    for (const auto& [plain, coded] : pairs) {
        EXPECT_EQ(IdCardReader::EncodeBase64(plain.data(), int(plain.size())), coded);
        EXPECT_EQ(IdCardReader::DecodeBase64(coded.data(), int(coded.size()), length), plain);
        EXPECT_EQ(length, int(plain.size()));
    }
    const std::string line(57, 'a');
    const std::string coded = IdCardReader::EncodeBase64((line + "b").data(), 58);
    EXPECT_EQ(coded.substr(76), "\r\nYg==");
    EXPECT_EQ(IdCardReader::DecodeBase64(coded.data(), int(coded.size()), length), line);
    EXPECT_EQ(length, 57 + 6) << "the rest counts, but is not decoded";
    EXPECT_EQ(IdCardReader::DecodeBase64("TWF", 3, length), "Ma") << "cut short";
}
