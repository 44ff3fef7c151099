#include "LanguageFolder.h"

QString languageFolder(int appLanguage, const QLocale& locale)
{
    if (appLanguage == 0)
        return QStringLiteral("zh");
    if (appLanguage == 1)
        return QStringLiteral("en");
    switch (locale.language()) {
    case QLocale::Chinese:
        return locale.country() == QLocale::China ? QStringLiteral("zh") : QStringLiteral("hk");
    case QLocale::Polish:
        return QStringLiteral("pl");
    case QLocale::Japanese:
        return QStringLiteral("jp");
    default:
        return QStringLiteral("en");
    }
}
