#include "TitleBar.h"

#include <gtest/gtest.h>

#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

#include <string>

namespace {

/// A window of the kind that every dialog is, with its title bar on top.
class TitledWindow : public ::testing::Test
{
protected:
    TitledWindow() : bar(new TitleBar(&window))
    {
        window.setWindowFlags(Qt::Window | Qt::FramelessWindowHint);
        window.setGeometry(100, 80, 400, 200);
        bar->resize(400, 40);
        window.show();
    }

    QPushButton* button(const char* name) { return bar->findChild<QPushButton*>(QLatin1String(name)); }

    /// Drags from the middle of the title by `offset`; how far the window went.
    QPoint drag(QPoint offset, Qt::MouseButton with = Qt::LeftButton)
    {
        const QPoint before = window.pos();
        const QPoint grip(150, 20);
        QTest::mousePress(window.windowHandle(), with, {}, grip);
        QTest::mouseMove(window.windowHandle(), grip + offset);
        QTest::mouseRelease(window.windowHandle(), with, {}, grip);
        QTest::mouseMove(window.windowHandle(), grip - QPoint(40, 0)); // let go: follows no more
        return window.pos() - before;
    }

    QWidget window;
    TitleBar* bar;
};

} // namespace

TEST_F(TitledWindow, IsDraggedByItsTitle)
{
    EXPECT_EQ(drag(QPoint(60, 30)), QPoint(60, 30));
    EXPECT_EQ(drag(QPoint(60, 30), Qt::RightButton), QPoint(0, 0));
    bar->EnableWindowMove(false);
    EXPECT_EQ(drag(QPoint(60, 30)), QPoint(0, 0));
    bar->EnableWindowMove(true);
    EXPECT_EQ(drag(QPoint(-20, -10)), QPoint(-20, -10));
}

TEST_F(TitledWindow, StaysPutWhileMaximized)
{
    const QPoint normal = window.pos();
    const auto sign = [&] { return button("buttonMaximize")->icon().pixmap(32).toImage(); };
    const QImage larger = sign();
    button("buttonMaximize")->click();
    ASSERT_TRUE(window.isMaximized());
    ASSERT_TRUE(QTest::qWaitFor([&] { return window.pos() != normal; }));
    EXPECT_EQ(button("buttonMaximize")->toolTip(), QStringLiteral("Restore"));
    EXPECT_NE(sign(), larger);
    EXPECT_EQ(drag(QPoint(60, 30)), QPoint(0, 0));
    button("buttonMaximize")->click();
    EXPECT_FALSE(window.isMaximized());
    ASSERT_TRUE(QTest::qWaitFor([&] { return window.pos() == normal; }));
    EXPECT_EQ(button("buttonMaximize")->toolTip(), QStringLiteral("Maximize"));
    EXPECT_EQ(sign(), larger);
    EXPECT_EQ(drag(QPoint(60, 30)), QPoint(60, 30));
    for (const bool becomesMaximized : {true, false}) {
        QTest::mouseDClick(window.windowHandle(), Qt::RightButton, {}, QPoint(150, 20));
        QTest::mouseDClick(window.windowHandle(), Qt::LeftButton, {}, QPoint(150, 20));
        EXPECT_EQ(window.isMaximized(), becomesMaximized);
    }
    bar->ShowMaximizeButton(false);
    QTest::mouseDClick(window.windowHandle(), Qt::LeftButton, {}, QPoint(150, 20));
    EXPECT_FALSE(window.isMaximized());
}

TEST(TitleBar, LeavesTheFirstFocusToTheWindowsOwnControls)
{
    QWidget window;
    new TitleBar(&window);
    auto* own = new QPushButton(&window);
    own->setObjectName(QStringLiteral("own"));
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    std::string order;
    for (int i = 0; i < 5; ++i) {
        order += window.focusWidget()->objectName().toStdString() + " ";
        QTest::keyClick(&window, Qt::Key_Tab);
    }
    EXPECT_EQ(order, "own buttonSkin buttonMinimize buttonMaximize buttonClose ");
}

TEST_F(TitledWindow, ShowsWhatItIsToldAndActsOnTheWindow)
{
    QSignalSpy closing(bar, &TitleBar::clickedclosesign);
    button("buttonClose")->click();
    EXPECT_EQ(closing.count(), 1);
    EXPECT_TRUE(window.isVisible()) << "the owner decides what closing means";
    button("buttonSkin")->click();
    button("buttonMinimize")->click();
    EXPECT_TRUE(window.isMinimized());
    EXPECT_EQ(closing.count(), 1);

    window.showNormal();
    bar->SetTitle(QStringLiteral("Some title"));
    EXPECT_EQ(bar->findChild<QLabel*>(QStringLiteral("labelTitle"))->text(), QStringLiteral("Some title"));
    const auto* icon = bar->findChild<QLabel*>(QStringLiteral("labelIcon"));
    EXPECT_FALSE(icon->pixmap(Qt::ReturnByValue).isNull()) << "the program's own icon at first";
    bar->ShowSkinButton(false);
    bar->ShowMinimizeButton(false);
    bar->ShowMaximizeButton(false);
    for (const char* name : {"buttonSkin", "buttonMinimize", "buttonMaximize", "buttonClose"})
        EXPECT_EQ(button(name)->isVisible(), name == std::string("buttonClose")) << name;
    bar->ShowCloseButton(false);
    EXPECT_FALSE(button("buttonClose")->isVisible());
}
