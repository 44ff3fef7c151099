// Every control says its name to a screen reader, and every picture button to the eye.
#include "AutoScan.h"
#include "BtnControl.h"
#include "FreshSettings.h"
#include "More.h"
#include "MsgBox.h"
#include "Thumbnail.h"
#include "TitleBar.h"
#include "ToolBar.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QTest>

namespace {

bool takesPart(const QWidget& widget)
{
    return widget.isVisible() && (widget.focusPolicy() != Qt::NoFocus || widget.inherits("QAbstractButton"));
}

void expectNamed(QWidget& window)
{
    window.show();
    int controls = 0;
    QList<QWidget*> widgets = window.findChildren<QWidget*>();
    widgets.append(&window);
    for (QWidget* widget : widgets) {
        if (!takesPart(*widget))
            continue;
        ++controls;
        QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(widget);
        ASSERT_NE(spoken, nullptr);
        EXPECT_FALSE(spoken->text(QAccessible::Name).isEmpty())
            << window.metaObject()->className() << " " << qPrintable(widget->objectName());
        const auto* button = qobject_cast<QAbstractButton*>(widget);
        if (button && button->text().isEmpty()) {
            EXPECT_FALSE(button->toolTip().isEmpty()) << qPrintable(widget->objectName());
        }
    }
    EXPECT_GT(controls, 0);
    window.hide();
}

} // namespace

using Accessibility = FreshSettings;

TEST_F(Accessibility, EveryControlHasAName)
{
    TitleBar title;
    More more;
    Thumbnail strip;
    AutoScan scan;
    for (QWidget* window : std::initializer_list<QWidget*>{&title, &more, &strip, &scan})
        expectNamed(*window);
    ToolBar tools;
    expectNamed(tools);
    tools.resize(tools.minimumSizeHint()); // without its captions
    expectNamed(tools);
    BtnControl bar;
    for (int i = 0; i < 17; ++i)
        bar.onDisplayMoreCheck(i, Qt::Checked);
    expectNamed(bar);
    MsgBox box;
    box.Warnning(QStringLiteral("text"));
    expectNamed(box);
}

TEST_F(Accessibility, TheKeyboardIsSeen)
{
    More more;
    more.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&more));
    QWidget* first = more.focusWidget();
    if (!first)
        QTest::keyClick(&more, Qt::Key_Tab);
    first = more.focusWidget();
    ASSERT_NE(first, nullptr);
    const QImage focused = first->grab().toImage();
    QTest::keyClick(&more, Qt::Key_Tab);
    ASSERT_NE(more.focusWidget(), first);
    EXPECT_NE(first->grab().toImage(), focused);
}
