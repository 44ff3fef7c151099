#include "Languages.h"

#include <array>

namespace {

constexpr std::array<const char*, 3> interfaceFiles = {
    "/lumroscanner_zh_cn.qm", "/lumroscanner_en.qm", "/lumroscanner_ru.qm"};
constexpr std::array<const char*, 3> toolkitFiles = {"/qtbase_zh_CN.qm", "", "/qtbase_ru.qm"};

/// -1: none of the translated languages. A Chinese locale falls back to the source texts, as every other one.
int languageIndex(int setting, const QLocale& system)
{
    if (setting >= 0 && setting < static_cast<int>(interfaceFiles.size()))
        return setting;
    if (system.language() == QLocale::English)
        return 1;
    return system.language() == QLocale::Russian ? 2 : -1;
}

QString fileOf(const std::array<const char*, 3>& files, int index)
{
    return index < 0 ? QString() : QString::fromLatin1(files[static_cast<size_t>(index)]);
}

} // namespace

QString languages::translationFile(int setting, const QLocale& system)
{
    return fileOf(interfaceFiles, languageIndex(setting, system));
}

QString languages::toolkitTranslationFile(int setting, const QLocale& system)
{
    return fileOf(toolkitFiles, languageIndex(setting, system));
}

bool languages::wantChineseLetters(int setting, const QLocale& system)
{
    constexpr int chinese = 0;
    const QLocale::Language own = system.language();
    return setting == chinese ||
           (own != QLocale::Chinese && own != QLocale::Japanese && own != QLocale::Korean);
}
