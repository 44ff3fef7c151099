#pragma once

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QCoreApplication>
#include <QTranslator>

/// The program's texts in a language, to the end of the scope.
class Words
{
public:
    explicit Words(const char* language)
    {
        EXPECT_TRUE(translator_.load(QLatin1String("lumroscanner_") + QLatin1String(language),
                                     QStringLiteral(TRANSLATIONS_FOLDER)));
        QCoreApplication::installTranslator(&translator_);
    }

    static constexpr const char* languages[] = {"en", "zh_cn", "ru"};

private:
    QTranslator translator_;
};

/// In every language the window, as small as it can be, fits a screen of 800 px and its buttons their words.
template <class Make> void expectRoomForWords(const Make& make)
{
    for (const char* language : Words::languages) {
        const Words words(language);
        const auto window = make();
        window->show();
        window->resize(window->minimumSizeHint());
        QCoreApplication::processEvents();
        EXPECT_LE(window->width(), 800) << language;
        for (const auto* button : window->template findChildren<QAbstractButton*>())
            EXPECT_TRUE(!button->isVisible() || button->text().isEmpty() ||
                        button->width() >= button->sizeHint().width())
                << language << qPrintable(button->text());
        window->close();
    }
}
