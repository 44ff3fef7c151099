// The button at the preview's edge, the panel that it opens, and the clicks on the picture meanwhile.
#include "ControlOverlay.h"

#include "ControlPanel.h"
#include "ShownView.h"
#include "TimerEnd.h"

#include <QPushButton>
#include <QSignalSpy>

namespace {

class ControlOverlayTest : public VideoViewTest
{
protected:
    ControlOverlayTest()
    {
        window_.resize(800, 600);
        window_.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window_));
        show(plain({400, 400}, Qt::darkGray)); // from 100 to 700
    }
    /// Of one that shows already.
    QWidget* part(const char* name) const { return view_->findChild<QWidget*>(QLatin1String(name)); }
    ControlPanel* panel() const { return view_->findChild<ControlPanel*>(); }
    void press(const char* button) const { QTest::mouseClick(part(button), Qt::LeftButton); }
    /// By the real mouse, which meets what lies over the picture. @return how often it was told by then
    int clickAt(const QPoint& at)
    {
        QTest::mouseClick(window_.windowHandle(), Qt::LeftButton, {}, at);
        auto* second = overlay_.findChild<QTimer*>();
        if (second->isActive())
            endNow(*second);
        return told_.count();
    }
    bool isMarked() const { return part("FocusMark") && part("FocusMark")->isVisible(); }
    static ControlList offer(const QVector<int>& controls)
    {
        ControlList list;
        for (const int control : controls)
            list << MirvakControlInfo{control, MIRVAK_RANGE, 0, 100, 1, 50, 50, 0, false};
        return list;
    }

    ControlOverlay overlay_{*view_, view_};
    QSignalSpy told_{&overlay_, &ControlOverlay::focusWanted};
};

TEST_F(ControlOverlayTest, AClickFocusesOnlyWhileThePanelIsOpenAndItsMarkStaysOnWhatItMeant)
{
    const QPoint at(300, 200), other(250, 420);
    EXPECT_EQ(clickAt(at), 0);
    press("buttonControls");
    ASSERT_TRUE(panel()->isVisible());
    EXPECT_FALSE(isMarked());
    EXPECT_EQ(clickAt(at), 1);
    ASSERT_TRUE(isMarked());
    EXPECT_EQ(part("FocusMark")->geometry().center(), at);
    EXPECT_EQ(clickAt(at), 2) << "the mark is no obstacle";
    wheel(*view_, {0, 120});
    EXPECT_FALSE(isMarked()) << "something else lies there now";
    EXPECT_EQ(clickAt(other), 3);
    overlay_.hideFocusMark();
    EXPECT_FALSE(isMarked());
    EXPECT_EQ(clickAt(other), 4);
    press("buttonCloseControls");
    EXPECT_FALSE(panel()->isVisible() || isMarked());
    EXPECT_EQ(clickAt(other), 4);
}

TEST_F(ControlOverlayTest, TheKeyboardGoesIntoThePanelThatItOpenedAndBackToTheButton)
{
    view_->setFocus();
    press("buttonControls");
    EXPECT_TRUE(view_->hasFocus()) << "the mouse leaves it where it is";
    press("buttonControls");
    EXPECT_TRUE(view_->hasFocus());
    part("buttonControls")->setFocus(Qt::TabFocusReason);
    QTest::keyClick(part("buttonControls"), Qt::Key_Space);
    ASSERT_TRUE(panel()->isVisible());
    EXPECT_TRUE(panel()->isAncestorOf(QApplication::focusWidget()));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    EXPECT_FALSE(panel()->isVisible());
    EXPECT_TRUE(part("buttonControls")->hasFocus());
}

TEST_F(ControlOverlayTest, ThePanelIsAsHighAsItsRowsWhereThereIsRoomAndStandsBesideItsButton)
{
    press("buttonControls");
    const auto isPlaced = [this] {
        const QRect panel = this->panel()->geometry(), button = part("buttonControls")->geometry();
        EXPECT_TRUE(view_->rect().contains(panel));
        EXPECT_GE(panel.top(), 52) << "below the tools";
        EXPECT_EQ(button.right() + 1, panel.left());
        EXPECT_EQ(button.center().y(), (view_->height() - 1) / 2);
        return panel.height();
    };
    overlay_.showControls(offer({MIRVAK_GAIN}), true);
    const int one = isPlaced();
    overlay_.showControls(offer({MIRVAK_GAIN, MIRVAK_BRIGHTNESS, MIRVAK_CONTRAST, MIRVAK_SATURATION}), true);
    EXPECT_GT(isPlaced(), one + 60) << "another camera offers more";
    window_.resize(420, 220);
    QCoreApplication::processEvents();
    isPlaced();
    press("buttonControls");
    EXPECT_EQ(part("buttonControls")->geometry().right(), view_->width() - 1);
}

// What the mouse does on the panel is nothing to the picture below.
TEST_F(ControlOverlayTest, ThePanelKeepsTheMouseFromThePreview)
{
    press("buttonControls");
    overlay_.showControls({}, true);
    const QPoint at = panel()->geometry().topLeft() + QPoint(3, 3);
    const QPoint before = view_->GetImageCurrentPoint();
    QSignalSpy doubled(view_, &VideoView::doubClickSign);
    QTest::mouseDClick(window_.windowHandle(), Qt::LeftButton, {}, at);
    QTest::mousePress(window_.windowHandle(), Qt::LeftButton, {}, at);
    QTest::mouseMove(window_.windowHandle(), at - QPoint(80, 0));
    QTest::mouseRelease(window_.windowHandle(), Qt::LeftButton, {}, at - QPoint(80, 0));
    wheel(*panel(), {0, 120});
    EXPECT_EQ(doubled.count() + clickAt(at), 0);
    EXPECT_EQ(view_->GetImageCurrentPoint(), before);
    EXPECT_EQ(view_->zoom(), 1.0);
}

} // namespace
