#include "ChineseLetters.h"

#include "FreshSettings.h"
#include "SetGlobal.h"

#include <QComboBox>
#include <QPainter>

namespace {

QImage drawn(QFont font, const QString& text)
{
    font.setPixelSize(40);
    QImage picture(200, 60, QImage::Format_RGB32);
    picture.fill(Qt::white);
    QPainter painter(&picture);
    painter.setFont(font);
    painter.drawText(picture.rect(), Qt::AlignCenter, text);
    return picture;
}

const QString letters = QStringLiteral("直骨返"); // which China and Japan write differently

} // namespace

TEST(ChineseLetters, HaveTheFormsOfChinaAndLeaveOtherLettersAsTheyAre)
{
    const QFont usual;
    const QFont tagged = ChineseLetters::in(usual);
    const QImage chinese = drawn(QFont(QStringLiteral("Noto Sans CJK SC")), letters);
    ASSERT_NE(chinese, drawn(QFont(QStringLiteral("Noto Sans CJK JP")), letters));
    EXPECT_EQ(drawn(tagged, letters), chinese);
    for (const QString& text : {QStringLiteral("Scan 1.jpg"), QStringLiteral("Снимок")})
        EXPECT_EQ(drawn(tagged, text), drawn(usual, text)) << qPrintable(text);
}

TEST_F(FreshSettings, TheNameOfTheChineseLanguageIsWrittenInItsOwnLetters)
{
    const SetGlobal page;
    const auto* choice = page.findChild<QComboBox*>(QStringLiteral("comboLanguage"));
    EXPECT_EQ(drawn(choice->itemData(0, Qt::FontRole).value<QFont>(), letters),
              drawn(QFont(QStringLiteral("Noto Sans CJK SC")), letters));
}
