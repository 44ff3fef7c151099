// What stands on a card in codes or in pieces.
#include "IdCardReader.h"

#include "TempDir.h"
#include "TemporaryPortrait.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QFileInfo>
#include <QImage>

namespace {

std::string split(std::string text)
{
    char* parts[8];
    int count = -1;
    IdCardReader::cardsplit(text.data(), '|', parts, count);
    std::string pieces;
    for (int i = 0; i < count; ++i)
        pieces += "[" + std::string(parts[i]) + "]";
    return pieces;
}

} // namespace

TEST(CardTexts, CodesBecomeWords)
{
    const ReadZktCard card;
    QString words;
    for (const char* code : {"1", "2", "0", "", "x", "9", "7"})
        words += card.readgender(code) + QLatin1Char(' ');
    EXPECT_EQ(words.toStdString(), "男 女 未知的性别 未知的性别 未知的性别 未说明的性别 未说明的性别 ");
    words.clear();
    for (const char* code : {"01", "5", "29", "43", "56", "97", "98", "0", "57", "58", "96", "99", "-1", ""})
        words += card.readnation(code) + QLatin1Char(' ');
    EXPECT_EQ(words.trimmed().toStdString(), "汉族 维吾尔族 柯尔克孜族 乌孜别克族 基诺族 未定族称人口 入籍");
}

TEST(CardTexts, ABufferIsSplitInPlace)
{
    const std::pair<const char*, const char*> buffers[] = {
        {"a||b", "[a][][b]"}, {"a||b|", "[a][][b]"}, {"a|b\rc|d", "[a][b]"}, {"a|\r", "[a][]"}, {"", ""}};
    for (const auto& [buffer, pieces] : buffers)
        EXPECT_EQ(split(buffer), pieces) << buffer;
}

TEST(CardTexts, Base64HasItsLinesAndItsQuirk)
{
    int length = -1;
    const std::string bytes("\0\xFF\xFB\xEF", 4);
    int size = 0;
    for (const char* expected : {"", "AA==", "AP8=", "AP/7", "AP/77w=="}) {
        const std::string code = IdCardReader::EncodeBase64(bytes.data(), size);
        EXPECT_EQ(code, expected);
        EXPECT_EQ(IdCardReader::DecodeBase64(code.data(), int(code.size()), length),
                  bytes.substr(0, size_t(size)));
        EXPECT_EQ(length, size++);
    }
    const std::string lines = IdCardReader::EncodeBase64(std::string(58, 'a').data(), 58);
    EXPECT_EQ(lines.substr(76), "\r\nYQ==");
    EXPECT_EQ(IdCardReader::DecodeBase64(lines.data(), int(lines.size()), length), std::string(57, 'a'));
    EXPECT_EQ(length, 57 + 6) << "the rest counts, but is not decoded";
    EXPECT_EQ(IdCardReader::DecodeBase64("TWF", 3, length), "Ma") << "cut short";
}

TEST(TemporaryPortrait, GoesWithItsWindowAndALinkInItsPlaceIsNone)
{
    const TempDir folder;
    const QString path = QString::fromStdString(folder.file("elphoto.bmp")),
                  other = QString::fromStdString(folder.file("other.bmp"));
    QImage face(8, 8, QImage::Format_RGB32);
    face.fill(Qt::red);
    ASSERT_TRUE(face.save(path) && face.save(other));
    {
        TemporaryPortrait portrait;
        EXPECT_FALSE(portrait.load(path).isNull());
    }
    EXPECT_FALSE(QFile::exists(path));
    ASSERT_TRUE(QFile::link(other, path));
    {
        TemporaryPortrait portrait;
        EXPECT_TRUE(portrait.load(path).isNull());
        EXPECT_TRUE(portrait.load(QString::fromStdString(folder.path())).isNull());
    }
    EXPECT_TRUE(QFile::exists(other)) << "somebody else's file";
    EXPECT_TRUE(QFileInfo(path).isSymLink());
}
