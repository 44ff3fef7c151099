#include "InputShield.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QKeyEvent>
#include <QPushButton>
#include <QShortcut>
#include <QSlider>
#include <QTest>
#include <QWheelEvent>

#include <optional>

TEST(InputShield, WhatIsPressedMeanwhileNeverHappens)
{
    QWidget window;
    QPushButton button(&window);
    QSlider slider(&window);
    QShortcut shortcut(QKeySequence(QStringLiteral("Ctrl+D")), &window);
    int commands = 0;
    QObject::connect(&button, &QPushButton::clicked, [&] { ++commands; });
    QObject::connect(&shortcut, &QShortcut::activated, [&] { ++commands; });
    window.show();
    QApplication::setActiveWindow(&window);
    const auto pressAll = [&] {
        QTest::mouseClick(&button, Qt::LeftButton);
        QTest::keyClick(&button, Qt::Key_Space);
        QTest::keyClick(&window, Qt::Key_D, Qt::ControlModifier);
        QWheelEvent turned(
            {5, 5}, {5, 5}, {}, {0, 120}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&slider, &turned);
    };
    pressAll();
    EXPECT_EQ(commands, 3);
    const int value = slider.value();
    EXPECT_GT(value, 0);

    std::optional<InputShield> shield(std::in_place);
    pressAll();
    QCoreApplication::postEvent(&button, new QKeyEvent(QEvent::KeyPress, Qt::Key_Select, Qt::NoModifier));
    EXPECT_FALSE(shield->isEscapeSeen());
    QTest::keyClick(&window, Qt::Key_Escape);
    EXPECT_TRUE(shield->isEscapeSeen());
    shield.reset();
    EXPECT_FALSE(button.isDown()) << "what still waited is dropped";
    EXPECT_EQ(slider.value(), value);

    for (const auto event : {QEvent::MouseButtonRelease, QEvent::KeyRelease}) {
        const bool isMouse = event == QEvent::MouseButtonRelease;
        isMouse ? QTest::mousePress(&button, Qt::LeftButton) : QTest::keyPress(&button, Qt::Key_Space);
        shield.emplace();
        isMouse ? QTest::mouseRelease(&button, Qt::LeftButton) : QTest::keyRelease(&button, Qt::Key_Space);
        shield.reset();
        EXPECT_FALSE(button.isDown()) << event;
    }
    EXPECT_EQ(commands, 3) << "a button that was held does not click";
    pressAll();
    EXPECT_EQ(commands, 6);

    shield.emplace();
    QCloseEvent byUser;
    QSpontaneKeyEvent::setSpontaneous(&byUser); // of the window manager
    qApp->notify(&window, &byUser);
    EXPECT_TRUE(!byUser.isAccepted() && shield->isEscapeSeen()) << "as good as Escape";
    QWidget other;
    other.show();
    other.close();
    EXPECT_FALSE(other.isVisible()) << "the program closes what it likes";
}
