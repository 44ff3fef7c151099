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
    /// Plain, but for stripes in the lower right quarter.
    static QImage scene()
    {
        QImage picture = solid(640, 480, Qt::darkGray);
        QPainter stripes(&picture);
        for (int y = 240; y < 480; y += 8)
            stripes.fillRect(320, y, 320, 4, Qt::white);
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
    const auto says = [this](const char* text) {
        const QList<QLabel*> labels = panel()->findChildren<QLabel*>();
        return std::any_of(labels.begin(), labels.end(), [=](const QLabel* label) {
            return label->isVisible() && label->text() == QLatin1String(text);
        });
    };
    EXPECT_TRUE(waitFor([=] { return says("No camera is open."); }));
    changeDesk(desk);
    EXPECT_TRUE(levelBecomes(178)) << "set again";
    EXPECT_FALSE(says("No camera is open."));
    ASSERT_TRUE(waitFor([this] { return brightness().isVisible(); }));
    click("buttonAsDelivered");
    EXPECT_TRUE(levelBecomes(128));
    window_->resize(500, 330);
    EXPECT_TRUE(view().rect().contains(panel()->geometry())) << "it scrolls";
    QTest::keyClick(&brightness(), Qt::Key_Escape);
    EXPECT_FALSE(panel()->isVisible());
}

TEST_F(TuningWindowTest, AClickFocusesOnWhatIsShownThereHoweverItIsTurned)
{
    ASSERT_TRUE(shows(camera("controls = true;"), scene()));
    openPanel();
    const auto search = [this](double x, double y) { // whether something was found
        if (!focusBox().isChecked())
            focusBox().click();
        EXPECT_TRUE(waitFor(
            [this] { return !panel()->findChild<QSlider*>(QStringLiteral("sliderFocus"))->isEnabled(); }));
        view().ShowNotice(QString());
        const QPoint at = clickAt(x, y);
        EXPECT_TRUE(waitFor([this] { return !focusBox().isChecked(); })) << "it tries";
        const auto* mark = view().findChild<QWidget*>(QStringLiteral("FocusMark"));
        EXPECT_EQ(mark->geometry().center(), at);
        EXPECT_TRUE(waitFor([=] { return !mark->isVisible(); }));
        return notice().isEmpty();
    };
    const std::tuple<int, double, double> turns[] = {{1, 0.25, 0.75}, {2, 0.25, 0.25}, {3, 0.75, 0.25}};
    for (const auto& [turn, x, y] : turns) { // where the stripes come to lie
        window_->onRotateChanged(turn);
        ASSERT_TRUE(waitFor([this, turn = turn] {
            const QSize shown = view().GetImageCurrentSize();
            return (shown.width() < shown.height()) == (turn % 2 == 1);
        }));
        EXPECT_TRUE(search(x, y)) << turn;
        EXPECT_FALSE(focusBox().isChecked()) << "found, and left to the hand";
    }
    EXPECT_FALSE(search(0.25, 0.25)) << "nothing there";
    EXPECT_TRUE(notice().startsWith(QStringLiteral("There is nothing to focus on"))) << qPrintable(notice());
    EXPECT_TRUE(waitFor([this] { return focusBox().isChecked(); })) << "as before";
}
