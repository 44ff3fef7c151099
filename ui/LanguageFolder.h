#pragma once

#include <QLocale>
#include <QString>

/// Folder of the captioned icons, "zh", "hk", "en", "pl" or "jp".
/// @param appLanguage the setting "App_Language": 0 Chinese, 1 English, anything else goes by `locale`
QString languageFolder(int appLanguage, const QLocale& locale = QLocale::system());
