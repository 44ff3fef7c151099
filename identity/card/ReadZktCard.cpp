#include "ReadZktCard.h"

#include "CardLayout.h"
#include "hidcard.h"

#include <QDebug>
#include <QDir>
#include <QFile>

#include <array>

namespace {

constexpr int genderIndex = 1;
constexpr int nationIndex = 2;
// Codes of the table's two last entries, which do not stand for their places.
constexpr int undeterminedNation = 97;
constexpr int naturalised = 98;

int users = 0; // of the library's one reader; also of one that did not answer, and may be attached later

QString portraitPath()
{
    return QDir(QDir::tempPath()).path() + QStringLiteral("/elphoto.bmp");
}

int number(const char* text)
{
    return QByteArray(text).toInt();
}

} // namespace

ReadZktCard::ReadZktCard()
    : nations_(
          QStringLiteral(
              "汉族 蒙古族 回族 藏族 维吾尔族 苗族 彝族 壮族 布依族 朝鲜族 满族 侗族 瑶族 白族 土家族 哈尼族 "
              "哈萨克族 傣族 黎族 傈僳族 佤族 畲族 高山族 拉祜族 水族 东乡族 纳西族 景颇族 柯尔克孜族 土族 "
              "达斡尔族 仫佬族 羌族 布朗族 撒拉族 毛南族 仡佬族 锡伯族 阿昌族 普米族 塔吉克族 怒族 "
              "乌孜别克族 "
              "俄罗斯族 鄂温克族 德昂族 保安族 裕固族 京族 塔塔尔族 独龙族 鄂伦春族 赫哲族 门巴族 珞巴族 "
              "基诺族 "
              "未定族称人口 入籍")
              .split(QLatin1Char(' ')))
{
}

ReadZktCard::~ReadZktCard()
{
    setUser(false);
}

void ReadZktCard::setUser(bool isUser)
{
    users += int(isUser) - int(isUser_);
    isUser_ = isUser;
}

int ReadZktCard::inithycard()
{
    setUser(true);
    return h_idcard_openDevice();
}

int ReadZktCard::deinithycard()
{
    setUser(false);
    return users == 0 ? h_idcard_closeDevice() : HIDCARD_OK;
}

bool ReadZktCard::isShared()
{
    return users > 1;
}

int ReadZktCard::readhycard()
{
    texts_.clear();
    return h_idcard_readInfo();
}

int ReadZktCard::readhycardinfo()
{
    const QString portrait = portraitPath();
    // An earlier portrait is another person's, and in a folder that is open to all something may wait in its
    // place.
    QFile::remove(portrait);
    h_idcard_setPhotoPath(portrait.toUtf8().constData());
    const int type = readhycard();
    qDebug() << "card type:" << type;
    if (type < 0) {
        qDebug() << "Read card failed.";
        return type;
    }
    const CardLayout* layout = cardLayout(type);
    for (int index = 0; layout && index < layout->texts; ++index) {
        std::array<char, HIDCARD_TEXT_BYTES + 1> text{}; // ends, even where the library forgot it
        const bool isThere = h_idcard_readData(0, index, text.data()) != HIDCARD_NO_SUCH_FIELD;
        texts_ << (isThere ? decoded(type, index, text.data()) : QString());
    }
    if (layout)
        texts_ << portrait;
    return type;
}

QString ReadZktCard::decoded(int type, int index, const char* text) const
{
    if (index == genderIndex)
        return readgender(text);
    return index == nationIndex && type == 0 ? readnation(text) : QString::fromUtf8(text);
}

QString ReadZktCard::readgender(const char* text) const
{
    switch (number(text)) {
    case 0:
        return QStringLiteral("未知的性别");
    case 1:
        return QStringLiteral("男");
    case 2:
        return QStringLiteral("女");
    default:
        return QStringLiteral("未说明的性别");
    }
}

QString ReadZktCard::readnation(const char* text) const
{
    const int code = number(text);
    if (code == naturalised)
        return nations_.last();
    const int inOrder = nations_.size() - 2;
    if (code == undeterminedNation)
        return nations_[inOrder];
    return code >= 1 && code <= inOrder ? nations_[code - 1] : QString();
}
