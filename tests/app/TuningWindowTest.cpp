// The camera's controls in the window: from the button at the preview's edge to the pixels of the preview.
#include "WindowFixture.h"

#include "ControlPanel.h"

#include <QCheckBox>
#include <QPainter>
#include <QSlider>

namespace {

class TuningWindowTest : public LumroScannerTest
{
protected:
    /// Plain on top, stripes below.
    static QImage scene()
    {
        QImage picture = solid(640, 480, Qt::darkGray);
        QPainter stripes(&picture);
        for (int y = 240; y < 480; y += 8)
            stripes.fillRect(0, y, 640, 4, Qt::white);
        return picture;
    }
    static bool waitFor(const std::function<bool()>& condition) { return QTest::qWaitFor(condition, 15000); }
    ControlPanel* panel() const { return window_->findChild<ControlPanel*>(); }
    QSlider& brightness() const { return *panel()->findChild<QSlider*>(QStringLiteral("sliderBrightness")); }
    QCheckBox& focusBox() const { return *panel()->findChild<QCheckBox*>(QStringLiteral("checkFocus")); }
    void openPanel()
    {
        click("buttonControls");
        ASSERT_TRUE(waitFor([this] { return panel()->isVisible() && brightness().isVisible(); }));
    }
    int levelAt(const QPoint& at) { return view().grab().toImage().pixelColor(at).green(); }
    bool levelBecomes(int level)
    {
        return waitFor([=] {
            const QPoint corner = view().GetImageCurrentPoint() + QPoint(20, 60);
            return hasPicture() && std::abs(levelAt(corner) - level) < 4;
        });
    }
    /// A place of the picture as shown, in shares of it.
    QPoint clickAt(double x, double y)
    {
        const QSize size = view().GetImageCurrentSize();
        const QPoint at =
            view().GetImageCurrentPoint() + QPoint(int(size.width() * x), int(size.height() * y));
        QTest::mouseClick(&view(), Qt::LeftButton, {}, at);
        return at;
    }
};

} // namespace

TEST_F(TuningWindowTest, TheButtonOpensThePanelWhichWorksTheCameraAlsoAfterAnUnplug)
{
    const std::string desk = camera("controls = true;");
    ASSERT_TRUE(shows(desk, scene()));
    EXPECT_EQ(panel(), nullptr) << "not made before it is wanted";
    const QRect before(view().GetImageCurrentPoint(), view().GetImageCurrentSize());
    openPanel();
    EXPECT_EQ(QRect(view().GetImageCurrentPoint(), view().GetImageCurrentSize()), before);
    EXPECT_TRUE(view().rect().contains(panel()->geometry()));
    ASSERT_TRUE(levelBecomes(128));
    brightness().setValue(brightness().value() + 50);
    EXPECT_TRUE(levelBecomes(178));
    changeDesk("");
    ASSERT_TRUE(waitFor([this] { return !hasPicture() && !brightness().isVisible(); }));
    changeDesk(desk);
    EXPECT_TRUE(levelBecomes(178)) << "set again";
    ASSERT_TRUE(waitFor([this] { return brightness().isVisible(); }));
    click("buttonAsDelivered");
    EXPECT_TRUE(levelBecomes(128));
    window_->resize(500, 330);
    EXPECT_TRUE(view().rect().contains(panel()->geometry())) << "it scrolls";
    QTest::keyClick(&brightness(), Qt::Key_Escape);
    EXPECT_FALSE(panel()->isVisible());
}

TEST_F(TuningWindowTest, AClickFocusesOnWhatIsShownThere)
{
    ASSERT_TRUE(shows(camera("controls = true;"), scene()));
    window_->onRotateChanged(1); // the stripes come to the left
    openPanel();
    ASSERT_TRUE(waitFor([this] {
        return view().GetImageCurrentSize().width() < view().GetImageCurrentSize().height() &&
               focusBox().isChecked();
    }));
    const QPoint at = clickAt(0.25, 0.3);
    EXPECT_TRUE(waitFor([this] { return !focusBox().isChecked(); })) << "found, and left to the hand";
    const auto* mark = view().findChild<QWidget*>(QStringLiteral("FocusMark"));
    ASSERT_TRUE(mark);
    EXPECT_TRUE(waitFor([=] { return !mark->isVisible(); }));
    EXPECT_EQ(mark->geometry().center(), at);
    EXPECT_FALSE(focusBox().isChecked());
    focusBox().click();
    EXPECT_TRUE(waitFor(
        [this] { return !panel()->findChild<QSlider*>(QStringLiteral("sliderFocus"))->isEnabled(); }));
    clickAt(0.75, 0.3);
    EXPECT_TRUE(waitFor([this] { return !focusBox().isChecked(); })) << "it tries";
    EXPECT_TRUE(waitFor([this] { return focusBox().isChecked(); })) << "nothing there: as before";
}
