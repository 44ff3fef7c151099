#include "InputShield.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QKeyEvent>
#include <QPushButton>
#include <QShortcut>
#include <QTest>

#include <optional>

TEST(InputShield, WhatIsPressedMeanwhileNeverHappens)
{
    QWidget window;
    QPushButton button(&window);
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
    };
    pressAll();
    EXPECT_EQ(commands, 3);

    std::optional<InputShield> shield(std::in_place);
    pressAll();
    QCoreApplication::postEvent(&button, new QKeyEvent(QEvent::KeyPress, Qt::Key_Select, Qt::NoModifier));
    EXPECT_FALSE(shield->isEscapeSeen());
    QTest::keyClick(&window, Qt::Key_Escape);
    EXPECT_TRUE(shield->isEscapeSeen());
    shield.reset();
    EXPECT_FALSE(button.isDown()) << "what still waited is dropped";

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
}
