#include "ChineseLetters.h"

#include <QFontInfo>
#include <QStringList>

// Named here rather than asked of the font configuration, which takes some ten milliseconds of every start.
QFont ChineseLetters::in(const QFont& font)
{
    static const QStringList chinese{QStringLiteral("Noto Sans CJK SC"),
                                     QStringLiteral("Source Han Sans SC"),
                                     QStringLiteral("Source Han Sans CN"),
                                     QStringLiteral("Noto Sans SC"),
                                     QStringLiteral("WenQuanYi Micro Hei"),
                                     QStringLiteral("WenQuanYi Zen Hei")};
    QFont both = font;
    // The desktop's font is often an alias ("Sans Serif"), which the toolkit does not resolve in a list.
    both.setFamilies(QStringList(QFontInfo(font).family()) + chinese);
    return both;
}
