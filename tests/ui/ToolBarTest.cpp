#include "ToolBar.h"
#include "FreshSettings.h"
#include "Part.h"
#include "Settings.h"

#include <QCheckBox>
#include <QComboBox>
#include <QMenu>
#include <QPushButton>
#include <QSignalSpy>
#include <QStyle>
#include <QStyleOptionComboBox>
#include <QTest>

#include <string>

namespace {

void click(const ToolBar& bar, const char* name)
{
    part<QPushButton>(bar, name)->click();
}

QRect textField(QComboBox& box)
{
    QStyleOptionComboBox option;
    option.initFrom(&box);
    return box.style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, &box);
}

} // namespace

using ToolStrip = FreshSettings;

TEST_F(ToolStrip, ButtonsReportWhatTheySay)
{
    ToolBar bar;
    const QSignalSpy turned(&bar, &ToolBar::clickRotateSign);
    for (int i = 0; i < 4; ++i)
        click(bar, "buttonRotateRight");
    click(bar, "buttonRotateLeft");
    EXPECT_EQ(turned, (QList<QVariantList>{{1}, {2}, {3}, {0}, {3}})) << "absolute orientations";

    std::string said;
    QObject::connect(&bar, &ToolBar::clickAdapSign, [&] { said += "fit "; });
    QObject::connect(&bar, &ToolBar::clickFullScreenSign, [&] { said += "full "; });
    QObject::connect(&bar, &ToolBar::clickFreezSign, [&] { said += "freeze "; });
    QObject::connect(&bar, &ToolBar::clickZoomSign, [&](int way) { said += std::to_string(way); });
    for (const char* name :
         {"buttonAdapt", "buttonFullScreen", "buttonFreeze", "buttonZoomIn", "buttonZoomOut"})
        click(bar, name);
    EXPECT_EQ(said, "fit full freeze 12");
}

TEST_F(ToolStrip, CroppingIsOneChoiceOrNoneAsStored)
{
    using Changes = QList<QVariantList>;
    {
        ToolBar bar;
        const QSignalSpy changes(&bar, &ToolBar::clickDeskewSign);
        for (const char* name : {"buttonDeskew", "buttonManualDeskew", "buttonManualDeskew"})
            click(bar, name);
        // The former choice goes off before the new one comes on, so that the last word is the new one.
        EXPECT_EQ(changes, (Changes{{1, true}, {1, false}, {3, true}, {3, false}}));
    }
    for (const int stored : {0, 1, 2, 3, 4, -1}) {
        settings::deskew.write(settings, stored);
        const ToolBar bar;
        EXPECT_EQ(part<QPushButton>(bar, "buttonDeskew")->isChecked(), stored == 1);
        EXPECT_EQ(part<QPushButton>(bar, "buttonDeskewEx")->isChecked(), stored == 2);
        EXPECT_EQ(part<QPushButton>(bar, "buttonManualDeskew")->isChecked(), stored == 3);
    }
    // A stored choice takes part in the exchange like a clicked one.
    settings::deskew.write(settings, 2);
    ToolBar bar;
    const QSignalSpy changes(&bar, &ToolBar::clickDeskewSign);
    click(bar, "buttonDeskew");
    EXPECT_EQ(changes, (Changes{{2, false}, {1, true}}));
}

TEST_F(ToolStrip, TheSecondCameraLocksTheViewButNotItself)
{
    ToolBar bar;
    auto* assist = part<QCheckBox>(bar, "checkAssist");
    auto* zoom = part<QPushButton>(bar, "buttonZoomIn");
    EXPECT_FALSE(assist->isEnabled());
    bar.SetAssistEnable(true);

    QList<bool> zoomAtSignal;
    QSignalSpy assistSign(&bar, &ToolBar::checkAssistSign);
    QObject::connect(&bar, &ToolBar::checkAssistSign, &bar, [&] { zoomAtSignal.append(zoom->isEnabled()); });
    assist->click();
    bar.SetAssistChecked(true); // no change, no signal
    for (const char* name : {"comboDevice",
                             "comboModel",
                             "comboResolution",
                             "buttonAdapt",
                             "buttonFullScreen",
                             "buttonZoomIn",
                             "buttonZoomOut",
                             "buttonRotateLeft",
                             "buttonRotateRight",
                             "buttonFreeze"})
        EXPECT_FALSE(part<QWidget>(bar, name)->isEnabled()) << name;
    bar.SetAssistEnable(false);
    EXPECT_TRUE(assist->isEnabled()) << "one that is on can be switched off";
    EXPECT_TRUE(part<QPushButton>(bar, "buttonDeskew")->isEnabled());
    bar.SetAssistChecked(false);
    EXPECT_TRUE(part<QComboBox>(bar, "comboDevice")->isEnabled());
    EXPECT_EQ(assistSign, (QList<QVariantList>{{true}, {false}}));
    bar.SetAssistEnable(false);
    EXPECT_FALSE(assist->isEnabled());
    EXPECT_EQ(zoomAtSignal, (QList<bool>{false, true})) << "locked before it is reported";
}

TEST_F(ToolStrip, AChoiceMadeWhileADeviceOpensOrByTheProgramIsNotReported)
{
    ToolBar bar;
    bar.SetDeviceNames({QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")});
    auto* devices = part<QComboBox>(bar, "comboDevice");
    QList<int> reported;
    QObject::connect(&bar, &ToolBar::checkDeviceSign, &bar, [&](int index) {
        reported.append(index);
        if (reported.size() == 1)
            QTest::keyClick(devices, Qt::Key_Down);
    });
    QTest::keyClick(devices, Qt::Key_Down);
    EXPECT_EQ(reported, (QList<int>{1}));
    QTest::keyClick(devices, Qt::Key_Up);
    EXPECT_EQ(reported, (QList<int>{1, 1})) << "listens again, once";

    ToolBar other;
    QSignalSpy device(&other, &ToolBar::checkDeviceSign);
    QSignalSpy resolution(&other, &ToolBar::checkResolutionSign);
    EXPECT_EQ(other.GetCurrentDeviceIndex(), -1);
    other.SetDeviceName(QStringLiteral("first"));
    other.SetDeviceName(QString());
    other.SetDeviceName(QStringLiteral("second"));
    other.SetDefaultDevice(1);
    EXPECT_EQ(other.GetCurrentDeviceIndex(), 1);
    other.SetDefaultDevice(2); // there is no such row
    EXPECT_EQ(other.GetCurrentDeviceIndex(), 1);

    other.SetResolutions({QStringLiteral("1600*1200"), QStringLiteral("2592*1944")});
    other.SetResolution(QString());
    other.SetDefaultResolution(5);
    EXPECT_EQ(other.GetResolutionCurrentIndex(), 0);
    other.SetDefaultResolution(1);
    EXPECT_EQ(other.GetResolutionCurrentText(other.GetResolutionCurrentIndex()), QStringLiteral("2592*1944"));
    EXPECT_EQ(other.GetResolutionCurrentText(7), QString());
    other.SetResolutions({QStringLiteral("640*480")});
    EXPECT_EQ(other.GetResolutionCurrentCount(), 1);
    EXPECT_EQ(device.count() + resolution.count(), 0);
}

TEST_F(ToolStrip, FitsNarrowWindows)
{
    for (const int models : {0, 1, 2}) {
        ToolBar bar;
        bar.SetDeviceNames({QStringLiteral("A document camera with a very long friendly name")});
        bar.SetResolutions({QStringLiteral("2592*1944")});
        for (int i = 0; i < models; ++i)
            bar.SetModelType(QStringLiteral("MJPG"));
        bar.show();
        for (const int width : {1280, 1024, 800, 640, 471, 400, bar.minimumSizeHint().width()}) {
            bar.resize(width, bar.minimumSizeHint().height());
            QCoreApplication::processEvents();
            int right = 0;
            for (const QObject* object : bar.children()) {
                const auto* widget = qobject_cast<const QWidget*>(object);
                if (!widget || !widget->isVisible())
                    continue;
                EXPECT_GE(widget->geometry().left(), right)
                    << width << " " << qPrintable(widget->objectName());
                right = widget->geometry().right();
            }
            EXPECT_LT(right, width);
            auto* resolutions = part<QComboBox>(bar, "comboResolution");
            EXPECT_GE(textField(*resolutions).width(),
                      resolutions->fontMetrics().horizontalAdvance(resolutions->currentText()))
                << width;
        }
        EXPECT_LE(bar.minimumSizeHint().width(), 320) << "the least width of the view";
    }
}

// What has no room is in the menu, whole and in the same state, and works from there.
TEST_F(ToolStrip, WhatDoesNotFitIsInTheMenu)
{
    ToolBar bar;
    for (const char* model : {"MJPG", "YUY2"})
        bar.SetModelType(QLatin1String(model));
    bar.SetResolutions({QStringLiteral("1600*1200"), QStringLiteral("2592*1944")});
    bar.SetAssistEnable(true);
    bar.show();
    const auto entries = [&](int width, bool croppingOnly) {
        bar.SetCroppingOnly(croppingOnly);
        bar.resize(width, bar.height());
        QCoreApplication::processEvents();
        auto* opener = part<QPushButton>(bar, "buttonOverflow");
        QMenu* menu = opener->findChild<QMenu*>();
        if (opener->isVisible())
            QTest::keyClick(opener, Qt::Key_Space);
        EXPECT_EQ(menu->isVisible(), opener->isVisible());
        const QList<QAction*> actions = menu->isVisible() ? menu->actions() : QList<QAction*>();
        menu->hide();
        for (const QAction* action : actions)
            EXPECT_FALSE(action->toolTip().isEmpty());
        return actions;
    };
    const auto names = [](const QList<QAction*>& actions) {
        QStringList texts;
        for (const QAction* action : actions)
            texts << action->text();
        return texts.join(QLatin1Char(',')).toStdString();
    };
    EXPECT_EQ(names(entries(1200, false)), "");
    EXPECT_EQ(names(entries(bar.minimumSizeHint().width() + 162, false)),
              "Model,Fit to window,Full screen,Zoom in,Zoom out,Rotate left,Rotate right");
    const QList<QAction*> all = entries(1200, true);
    EXPECT_EQ(names(all),
              "Device,Model,Resolution,Second camera,Fit to window,Full screen,Zoom in,Zoom out,Rotate left,"
              "Rotate right,Freeze the picture");
    EXPECT_FALSE(all[0]->isEnabled()) << "there is no device";
    EXPECT_FALSE(all[3]->isChecked());

    QSignalSpy turned(&bar, &ToolBar::clickRotateSign);
    QSignalSpy chosen(&bar, &ToolBar::checkResolutionSign);
    all[9]->trigger();
    all[2]->menu()->actions().at(1)->trigger();
    EXPECT_EQ(turned, (QList<QVariantList>{{1}}));
    EXPECT_EQ(chosen, (QList<QVariantList>{{1}}));
    EXPECT_EQ(bar.GetResolutionCurrentIndex(), 1);
    all[3]->trigger();
    const QList<QAction*> locked = entries(1200, true);
    EXPECT_TRUE(locked[3]->isChecked() && locked[3]->isEnabled());
    EXPECT_TRUE(locked[2]->menu()->actions().at(1)->isChecked());
    EXPECT_FALSE(locked[9]->isEnabled() || locked[2]->isEnabled());
    EXPECT_EQ(names(entries(1200, false)), "");
}
