#include "ToolBar.h"
#include "FreshSettings.h"
#include "Part.h"
#include "Settings.h"

#include <QCheckBox>
#include <QComboBox>
#include <QPushButton>
#include <QSignalSpy>
#include <QStyle>
#include <QStyleOptionComboBox>
#include <QTest>

#include <utility>
#include <vector>

namespace {

using Changes = std::vector<std::pair<int, bool>>;

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

class ToolStrip : public FreshSettings
{
};

TEST_F(ToolStrip, RotationIsAnAbsoluteOrientation)
{
    ToolBar bar;
    QSignalSpy turned(&bar, &ToolBar::clickRotateSign);
    for (int i = 0; i < 4; ++i)
        click(bar, "buttonRotateRight");
    click(bar, "buttonRotateLeft");
    QList<int> turns;
    for (const QVariantList& arguments : turned)
        turns.append(arguments[0].toInt());
    EXPECT_EQ(turns, (QList<int>{1, 2, 3, 0, 3}));
}

TEST_F(ToolStrip, ViewButtonsReportWhatTheySay)
{
    ToolBar bar;
    QSignalSpy fit(&bar, &ToolBar::clickAdapSign);
    QSignalSpy full(&bar, &ToolBar::clickFullScreenSign);
    QSignalSpy freeze(&bar, &ToolBar::clickFreezSign);
    QSignalSpy zoom(&bar, &ToolBar::clickZoomSign);
    click(bar, "buttonAdapt");
    click(bar, "buttonFullScreen");
    click(bar, "buttonFreeze");
    click(bar, "buttonZoomIn");
    click(bar, "buttonZoomOut");
    EXPECT_EQ(fit.count(), 1);
    EXPECT_EQ(full.count(), 1);
    EXPECT_EQ(freeze.count(), 1);
    ASSERT_EQ(zoom.count(), 2);
    EXPECT_EQ(zoom[0][0], 1);
    EXPECT_EQ(zoom[1][0], 2);
}

TEST_F(ToolStrip, CroppingIsOneChoiceOrNone)
{
    ToolBar bar;
    Changes changes;
    QObject::connect(
        &bar, &ToolBar::clickDeskewSign, &bar, [&](int id, bool on) { changes.emplace_back(id, on); });
    click(bar, "buttonDeskew");
    click(bar, "buttonManualDeskew");
    click(bar, "buttonManualDeskew");
    // The former choice goes off before the new one comes on, so that the last word is the new one.
    EXPECT_EQ(changes, (Changes{{1, true}, {1, false}, {3, true}, {3, false}}));
}

TEST_F(ToolStrip, StoredCroppingIsTickedSilently)
{
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
    Changes changes;
    QObject::connect(
        &bar, &ToolBar::clickDeskewSign, &bar, [&](int id, bool on) { changes.emplace_back(id, on); });
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
    EXPECT_FALSE(part<QComboBox>(bar, "comboDevice")->isEnabled());
    EXPECT_TRUE(assist->isEnabled());
    EXPECT_TRUE(part<QPushButton>(bar, "buttonDeskew")->isEnabled());
    bar.SetAssistChecked(false);
    EXPECT_TRUE(part<QComboBox>(bar, "comboDevice")->isEnabled());
    ASSERT_EQ(assistSign.count(), 2);
    EXPECT_EQ(assistSign[0][0], true);
    EXPECT_EQ(assistSign[1][0], false);
    EXPECT_EQ(zoomAtSignal, (QList<bool>{false, true})) << "locked before it is reported";
}

TEST_F(ToolStrip, AChoiceMadeWhileADeviceOpensIsNotReported)
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
}

TEST_F(ToolStrip, ChoosersFillAndSelectWithoutSignals)
{
    ToolBar bar;
    QSignalSpy device(&bar, &ToolBar::checkDeviceSign);
    QSignalSpy resolution(&bar, &ToolBar::checkResolutionSign);
    EXPECT_EQ(bar.GetCurrentDeviceIndex(), -1);
    bar.SetDeviceName(QStringLiteral("first"));
    bar.SetDeviceName(QString());
    bar.SetDeviceName(QStringLiteral("second"));
    bar.SetDefaultDevice(1);
    EXPECT_EQ(bar.GetCurrentDeviceIndex(), 1);
    bar.SetDefaultDevice(2); // there is no such row
    EXPECT_EQ(bar.GetCurrentDeviceIndex(), 1);

    bar.SetResolutions({QStringLiteral("1600*1200"), QStringLiteral("2592*1944")});
    bar.SetResolution(QString());
    bar.SetDefaultResolution(5);
    EXPECT_EQ(bar.GetResolutionCurrentIndex(), 0);
    bar.SetDefaultResolution(1);
    EXPECT_EQ(bar.GetResolutionCurrentText(bar.GetResolutionCurrentIndex()), QStringLiteral("2592*1944"));
    EXPECT_EQ(bar.GetResolutionCurrentText(7), QString());
    bar.SetResolutions({QStringLiteral("640*480")});
    EXPECT_EQ(bar.GetResolutionCurrentCount(), 1);
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
        for (const int width : {1280, 1024, 800, bar.minimumSizeHint().width()}) {
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
        EXPECT_LT(bar.minimumSizeHint().width(), 800);
    }
}
