// The panel of the camera's controls as a hand at the mouse and the keyboard meets it.
#include "ControlPanel.h"
#include "MouseAndFrames.h"
#include "PictureClicks.h"
#include "TimerEnd.h"
#include "VideoView.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QSlider>
#include <QTest>

#include <gtest/gtest.h>

namespace {

class ControlPanelTest : public ::testing::Test
{
protected:
    ControlPanelTest()
    {
        view_.resize(800, 600);
        QObject::connect(&panel_, &ControlPanel::changed, [this](int control, int value) {
            last_ = {control, value};
        });
        panel_.resize(300, 400);
        view_.show();
        panel_.show();
    }
    void offer(bool isHeld)
    {
        panel_.showControls({{MIRVAK_EXPOSURE_AUTO, MIRVAK_SWITCH, 0, 1, 1, 1, isHeld, 0, false},
                             {MIRVAK_EXPOSURE_TIME, MIRVAK_RANGE, 1, 10000, 1, 156, 333, 0, isHeld},
                             {MIRVAK_WHITE_BALANCE, MIRVAK_RANGE, 2800, 6500, 10, 4600, 5000, 0, false},
                             {MIRVAK_ANTI_FLICKER, MIRVAK_MENU, 0, 3, 1, 1, 2, 0x6, false}},
                            true);
    }
    template <class Widget> Widget& find(const char* name)
    {
        return *panel_.findChild<Widget*>(QLatin1String(name));
    }
    QSlider& slider(const char* name) { return find<QSlider>(name); }
    using Change = std::pair<int, int>;

    VideoView view_;
    ControlPanel panel_{&view_};
    Change last_{-1, -1};
};

} // namespace

TEST_F(ControlPanelTest, ShowsWhatTheCameraOffersAndTellsWhatTheHandDoes)
{
    offer(false);
    EXPECT_EQ(last_, Change(-1, -1)) << "showing changes nothing";
    EXPECT_FALSE(slider("sliderGain").isVisibleTo(&panel_));
    EXPECT_EQ(find<QLabel>("valueExposure").text(), QLocale().toString(33.3, 'f', 1) + QStringLiteral(" ms"));
    EXPECT_EQ(find<QLabel>("valueWhiteBalance").text(), QStringLiteral("5000 K"));
    slider("sliderWhiteBalance").triggerAction(QSlider::SliderSingleStepAdd);
    EXPECT_EQ(last_, Change(MIRVAK_WHITE_BALANCE, 5010));
    QTest::keyClick(&slider("sliderWhiteBalance"), Qt::Key_Delete);
    EXPECT_EQ(last_, Change(MIRVAK_WHITE_BALANCE, 4600));
    mouse(slider("sliderExposure"), QEvent::MouseButtonDblClick, {5, 5});
    EXPECT_EQ(last_, Change(MIRVAK_EXPOSURE_AUTO, 1)) << "the value and then its automatic";
    auto& entries = find<QComboBox>("comboAntiFlicker");
    EXPECT_EQ(entries.currentText(), QStringLiteral("60 Hz"));
    ASSERT_EQ(entries.count(), 2);
    QTest::keyClick(&entries, Qt::Key_Up);
    EXPECT_EQ(last_, Change(MIRVAK_ANTI_FLICKER, 1));
    for (const auto* widget : panel_.findChildren<QWidget*>()) {
        if (widget->focusPolicy() != Qt::NoFocus && widget->isVisibleTo(&panel_) &&
            !qobject_cast<const QPushButton*>(widget)) {
            EXPECT_FALSE(widget->accessibleName().isEmpty()) << qPrintable(widget->objectName());
        }
    }

    offer(true);
    EXPECT_EQ(entries.count(), 2) << "each only once";
    EXPECT_TRUE(find<QCheckBox>("checkExposure").isChecked());
    EXPECT_FALSE(slider("sliderExposure").isEnabled());
    find<QCheckBox>("checkExposure").click();
    EXPECT_EQ(last_, Change(MIRVAK_EXPOSURE_AUTO, 0));
    panel_.showControls({}, true);
    EXPECT_FALSE(find<QPushButton>("buttonAsDelivered").isEnabled());
    EXPECT_FALSE(slider("sliderExposure").isVisibleTo(&panel_));
}

TEST_F(ControlPanelTest, ExposureTimesGoInStepsOfOneRatioThroughTheirWholeRange)
{
    offer(false);
    QSlider& exposure = slider("sliderExposure");
    exposure.triggerAction(QSlider::SliderToMinimum);
    EXPECT_EQ(last_.second, 1);
    QVector<int> values;
    for (int step = 0; step < 200 && last_.second < 10000; ++step) {
        exposure.triggerAction(QSlider::SliderSingleStepAdd);
        values << last_.second;
        // The camera's answer, which may stand for several positions.
        panel_.showControls({{MIRVAK_EXPOSURE_TIME, MIRVAK_RANGE, 1, 10000, 1, 156, last_.second, 0, false}},
                            true);
    }
    EXPECT_EQ(values.last(), 10000) << "no position is a trap";
    EXPECT_TRUE(std::is_sorted(values.begin(), values.end()));
    EXPECT_NEAR(values.indexOf(*std::lower_bound(values.begin(), values.end(), 100)), values.size() / 2, 3);
}

TEST_F(ControlPanelTest, EveryControlHasTheRowOfItsName)
{
    const std::pair<int, const char*> rows[] = {{MIRVAK_FOCUS, "Focus"},
                                                {MIRVAK_EXPOSURE_TIME, "Exposure"},
                                                {MIRVAK_GAIN, "Gain"},
                                                {MIRVAK_WHITE_BALANCE, "White balance"},
                                                {MIRVAK_BRIGHTNESS, "Brightness"},
                                                {MIRVAK_CONTRAST, "Contrast"},
                                                {MIRVAK_SATURATION, "Saturation"},
                                                {MIRVAK_SHARPNESS, "Sharpness"},
                                                {MIRVAK_BACKLIGHT, "Backlight"}};
    for (const auto& [control, name] : rows) {
        panel_.showControls({{control, MIRVAK_RANGE, 0, 9, 0, 1, 20, 0, false}}, true); // 20 is none of its
        QList<QSlider*> shown;                                                          // values, no step
        for (QSlider* slider : panel_.findChildren<QSlider*>())
            if (slider->isVisibleTo(&panel_))
                shown << slider;
        ASSERT_EQ(shown.size(), 1) << name;
        EXPECT_EQ(shown[0]->accessibleName(), QLatin1String(name));
        EXPECT_EQ(shown[0]->value(), 9) << name;
        shown[0]->triggerAction(QSlider::SliderToMinimum);
        EXPECT_EQ(last_, Change(control, 0)) << name;
        shown[0]->triggerAction(QSlider::SliderSingleStepAdd);
        EXPECT_EQ(last_, Change(control, 1)) << name;
        bool saysFocus = false;
        for (const QLabel* label : panel_.findChildren<QLabel*>())
            saysFocus |= label->isVisibleTo(&panel_) && label->text().contains(QLatin1String("focuses"));
        EXPECT_EQ(saysFocus, control == MIRVAK_FOCUS) << name;
    }
    offer(false);
    panel_.showControls({{MIRVAK_WHITE_BALANCE, MIRVAK_RANGE, 2800, 6500, 10, 4600, 5006, 0, false}}, true);
    slider("sliderWhiteBalance").triggerAction(QSlider::SliderSingleStepAdd);
    EXPECT_EQ(last_.second, 5020) << "one step on from the nearest";
}

TEST_F(ControlPanelTest, WhatTheCameraHoldsOrTheHandHoldsIsLeftAlone)
{
    view_.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&view_));
    offer(false);
    QSlider& exposure = slider("sliderExposure");
    exposure.setFocus();
    offer(true);
    EXPECT_TRUE(find<QCheckBox>("checkExposure").hasFocus()) << "not another row's";
    last_ = {-1, -1};
    mouse(*exposure.parentWidget(), QEvent::MouseButtonDblClick, {5, 5});
    EXPECT_EQ(last_, Change(-1, -1)) << "its own automatic is as delivered, and the value is not free";
    panel_.showControls({{MIRVAK_ANTI_FLICKER, MIRVAK_MENU, 0, 3, 1, 1, 2, 0x6, true}}, true);
    EXPECT_FALSE(find<QComboBox>("comboAntiFlicker").isEnabled());

    offer(false);
    QSlider& balance = slider("sliderWhiteBalance");
    const int before = balance.value();
    balance.setSliderDown(true);
    panel_.showControls({{MIRVAK_WHITE_BALANCE, MIRVAK_RANGE, 2800, 6500, 10, 4600, 3000, 0, false}}, true);
    EXPECT_EQ(balance.value(), before) << "what the camera still had before";
    balance.setSliderDown(false);
    QWheelEvent turned({5, 5}, balance.mapToGlobal({5, 5}), {}, {0, 120}, {}, {}, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&balance, &turned);
    EXPECT_EQ(balance.value(), before) << "nor does the wheel turn a control by accident";
}

TEST(PictureClicks, TellsOfSingleClicksOnThePictureOnly)
{
    VideoView view;
    view.resize(800, 400);
    view.show();
    view.SetImageData(plain({400, 400}, Qt::red)); // shown from 200 to 600
    QCoreApplication::processEvents();
    PictureClicks clicks(view, nullptr);
    QSignalSpy told(&clicks, &PictureClicks::clicked);
    const auto press = [&](const QPoint& at, const QPoint& to) {
        mouse(view, QEvent::MouseButtonPress, at);
        if (at != to)
            mouse(view, QEvent::MouseMove, to);
        mouse(view, QEvent::MouseButtonRelease, to);
    };
    auto* second = clicks.findChild<QTimer*>();
    const auto toldNow = [&] {
        if (second->isActive())
            endNow(*second);
        return told.count();
    };
    press({300, 100}, {300, 100});
    EXPECT_EQ(toldNow(), 0) << "it is off";
    clicks.setEnabled(true);
    press({300, 100}, {360, 100});
    EXPECT_EQ(toldNow(), 0) << "drags the picture";
    view.SetViewAdap();
    press({50, 100}, {50, 100});
    EXPECT_EQ(toldNow(), 0) << "beside the picture";
    press({300, 100}, {300, 100});
    mouse(view, QEvent::MouseButtonDblClick, {300, 100});
    mouse(view, QEvent::MouseButtonRelease, {300, 100});
    EXPECT_EQ(toldNow(), 0) << "a double click";
    press({500, 100}, {500, 100});
    ASSERT_EQ(toldNow(), 1);
    EXPECT_EQ(told[0][0].toPointF(), QPointF(0.75, 0.25));
    EXPECT_EQ(told[0][1].toPoint(), QPoint(500, 100));
    view.toggleFreeze();
    press({500, 100}, {500, 100});
    EXPECT_EQ(toldNow(), 1) << "frozen";
    view.toggleFreeze();
    view.onDeskewChanged(2, true);
    press({500, 100}, {500, 100});
    EXPECT_EQ(toldNow(), 1) << "a rectangle is drawn";
    view.onDeskewChanged(2, false);
    press({400, 200}, {400, 200});
    ASSERT_EQ(toldNow(), 2);
    EXPECT_EQ(told[1][0].toPointF(), QPointF(0.5, 0.5));
    view.SetImageData(plain({400, 200}, Qt::red)); // fills the view
    QCoreApplication::processEvents();
    press({200, 300}, {200, 300});
    ASSERT_EQ(toldNow(), 3);
    EXPECT_EQ(told[2][0].toPointF(), QPointF(0.25, 0.75));
    press({200, 300}, {200, 300});
    clicks.setEnabled(false); // before it was certain that no second click comes
    EXPECT_EQ(toldNow(), 3);
}
