#pragma once

#include <QLocale>
#include <QString>

/// Which language the user sees. Pure functions; reentrant.
namespace languages {

/// File of the interface translation below the folder "lib", for example "/lumroscanner_ru.qm"; empty when
/// the built-in English texts serve. `setting` is the stored choice (0 Chinese, 1 English, 2 Russian); any
/// other value leaves it to the locale.
QString translationFile(int setting, const QLocale& system);

/// The toolkit's own texts (file and print dialogs) in the same language; empty for English.
QString toolkitTranslationFile(int setting, const QLocale& system);

/// Whether Chinese texts need to be shown on purpose with the letter forms that are used in China: always in
/// the Chinese interface; in others only where the desktop's own language does not give these letters a form.
bool wantChineseLetters(int setting, const QLocale& system);

} // namespace languages
