#include "Languages.h"

#include <gtest/gtest.h>

namespace {

TEST(LanguagesTest, TheStoredChoiceGoesBeforeTheLocale)
{
    const QLocale english(QLocale::English);
    EXPECT_EQ(languages::translationFile(0, english), QStringLiteral("/lumroscanner_zh_cn.qm"));
    EXPECT_EQ(languages::translationFile(2, english), QStringLiteral("/lumroscanner_ru.qm"));
    EXPECT_EQ(languages::toolkitTranslationFile(2, english), QStringLiteral("/qtbase_ru.qm"));

    for (const int setting : {-1, 3, -7}) {
        EXPECT_EQ(languages::translationFile(setting, QLocale(QLocale::English)),
                  QStringLiteral("/lumroscanner_en.qm"));
        EXPECT_EQ(languages::translationFile(setting, QLocale(QLocale::Russian)),
                  QStringLiteral("/lumroscanner_ru.qm"));
        // Every other language gets the built-in texts.
        EXPECT_EQ(languages::translationFile(setting, QLocale(QLocale::Chinese, QLocale::China)), QString());
        EXPECT_EQ(languages::toolkitTranslationFile(setting, QLocale(QLocale::French)), QString());
    }
}

TEST(LanguagesTest, ChineseLettersAreThoseOfTheInterfaceThenOfTheDesktop)
{
    const QLocale japanese(QLocale::Japanese), taiwan(QLocale::Chinese, QLocale::Taiwan);
    EXPECT_TRUE(languages::wantChineseLetters(0, japanese));
    EXPECT_TRUE(languages::wantChineseLetters(0, taiwan));
    EXPECT_TRUE(languages::wantChineseLetters(2, QLocale(QLocale::English)));
    for (const int setting : {-1, 1, 2}) {
        EXPECT_FALSE(languages::wantChineseLetters(setting, japanese)) << "names of files may be Japanese";
        EXPECT_FALSE(languages::wantChineseLetters(setting, taiwan));
        EXPECT_FALSE(languages::wantChineseLetters(setting, QLocale(QLocale::Korean)));
    }
}

} // namespace
