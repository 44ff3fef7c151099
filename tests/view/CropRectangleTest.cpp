#include "ShownView.h"

#include <QPushButton>
#include <QSignalSpy>
#include <QWindow>

namespace {

TEST_F(VideoViewTest, DrawsACropRectangleInSelectionMode)
{
    show(plain({1600, 1200}, Qt::green));
    view_->SetHotKeyZoom(1);
    view_->onDeskewChanged(2, true);
    EXPECT_EQ(view_->zoom(), 1.0) << "selection mode fits the view";
    QSignalSpy selected(view_, &VideoView::rectSelected);

    drag(*view_, {200, 220}, {100, 120}); // upwards to the left
    ASSERT_EQ(selected.count(), 1);
    EXPECT_EQ(selected.at(0).at(0).toRect(), QRect(QPoint(100, 120), QPoint(200, 220)));
    EXPECT_EQ(view_->getSelectedRect(), QRect(400, 480, 404, 404));
    const QImage image = picture();
    for (const QPoint& edge : {QPoint(100, 170), QPoint(201, 170), QPoint(150, 120), QPoint(150, 221)})
        EXPECT_EQ(image.pixelColor(edge), QColor(Qt::red)) << edge.x() << "," << edge.y();
    EXPECT_EQ(image.pixelColor(150, 170), QColor(Qt::green));

    wheel(*view_, {0, 120});
    view_->SetHotKeyZoom(1);
    EXPECT_EQ(view_->zoom(), 1.0);
    mouse(*view_, QEvent::MouseButtonPress, {10, 10}, Qt::RightButton);
    mouse(*view_, QEvent::MouseButtonRelease, {90, 90}, Qt::RightButton);
    EXPECT_EQ(selected.count(), 1);
    EXPECT_EQ(view_->getSelectedRect(), QRect(400, 480, 404, 404));
}

TEST_F(VideoViewTest, DrawsARectangleThatBeginsUnderTheToolBar)
{
    show(plain({1600, 1200}, Qt::green));
    QEvent enter(QEvent::Enter);
    QCoreApplication::sendEvent(view_, &enter);
    auto* choice = bar_->findChild<QPushButton*>(QStringLiteral("buttonManualDeskew"));
    const auto press = [&] { QTest::mouseClick(choice, Qt::LeftButton); };
    press();
    ASSERT_TRUE(view_->isSelectionMode());
    EXPECT_LT(bar_->width(), 200) << "small, so that little is hidden";
    QSignalSpy selected(view_, &VideoView::rectSelected);
    const QPoint from = choice->mapTo(view_, choice->rect().center());
    const QPoint to(390, 150);
    QWindow* host = window_.windowHandle();
    QTest::mousePress(host, Qt::LeftButton, {}, from);
    QTest::mouseMove(host, from + QPoint(1, 1)); // not yet a drag
    EXPECT_EQ(bar_->y(), 0);
    QTest::mouseMove(host, to);
    EXPECT_LT(bar_->geometry().bottom(), 0) << "out of the way";
    EXPECT_EQ(picture().pixelColor(from.x(), 100), QColor(Qt::red)) << "drawn from where it was pressed";
    QTest::mouseRelease(host, Qt::LeftButton, {}, to);
    ASSERT_EQ(selected.count(), 1);
    EXPECT_EQ(selected[0][0].toRect(), QRect(from, to));
    EXPECT_TRUE(view_->isSelectionMode() && !choice->isDown()) << "a drag is not a click";
    EXPECT_EQ(bar_->y(), 0) << "back, so that the mode can be ended";

    QTest::mousePress(host, Qt::RightButton, {}, from);
    QTest::mouseMove(host, to);
    QTest::mouseRelease(host, Qt::RightButton, {}, to);
    EXPECT_EQ(selected.count(), 1) << "by the left button only";
    EXPECT_EQ(bar_->y(), 0);

    mouse(*view_, QEvent::MouseButtonPress, {20, 60});
    EXPECT_LT(bar_->geometry().bottom(), 0);
    mouse(*view_, QEvent::MouseButtonRelease, {20, 60});
    press();
    EXPECT_FALSE(view_->isSelectionMode());
    EXPECT_GT(bar_->width(), 200);
    QTest::mousePress(host, Qt::LeftButton, {}, choice->mapTo(view_, choice->rect().center()));
    QTest::mouseMove(host, to);
    QTest::mouseRelease(host, Qt::LeftButton, {}, to);
    EXPECT_EQ(selected.count(), 2) << "not outside the mode";
    view_->onDeskewChanged(2, true);
    mouse(*view_, QEvent::MouseButtonPress, {20, 60});
    EXPECT_LT(bar_->geometry().bottom(), 0);
    view_->onDeskewChanged(2, false); // while the mouse still draws
    EXPECT_EQ(bar_->y(), 0);
}

TEST_F(VideoViewTest, DropsTheRectangleThatNoLongerMeansAnything)
{
    show(plain({1600, 1200}, Qt::green));
    const auto select = [this] {
        view_->onDeskewChanged(2, true);
        drag(*view_, {100, 100}, {200, 200});
        return view_->getSelectedRect();
    };
    EXPECT_FALSE(select().isNull());
    for (const QPoint& to :
         {QPoint(51, 51), QPoint(50, 200), QPoint(200, 50)}) { // no crop to a line of pixels
        EXPECT_FALSE(select().isNull());
        drag(*view_, {50, 50}, to);
        EXPECT_TRUE(view_->getSelectedRect().isNull()) << to.x();
    }
    EXPECT_FALSE(select().isNull());
    view_->onDeskewChanged(2, false);
    EXPECT_TRUE(view_->getSelectedRect().isNull());
    EXPECT_FALSE(select().isNull());
    view_->onDeskewChanged(0, true);
    EXPECT_FALSE(view_->isSelectionMode());
    EXPECT_TRUE(view_->getSelectedRect().isNull());
    EXPECT_FALSE(select().isNull());
    show(plain({1200, 1600}, Qt::green));
    EXPECT_TRUE(view_->getSelectedRect().isNull()) << "the picture was turned";
    EXPECT_FALSE(select().isNull());
    for (int turn : {1, 2})
        Q_EMIT bar_->clickRotateSign(turn);
    show(plain({1200, 1600}, Qt::green));
    EXPECT_TRUE(view_->getSelectedRect().isNull()) << "turned on its head before a frame came";
    EXPECT_FALSE(select().isNull());
    view_->ClearFrame();
    EXPECT_TRUE(view_->getSelectedRect().isNull());
    show(plain({1600, 1200}, Qt::green));
    EXPECT_TRUE(view_->getSelectedRect().isNull()) << "another camera came";
    show(plain({1200, 1600}, Qt::green)); // beside the picture, which lies at 87 to 312
    drag(*view_, {5, 5}, {60, 200});
    EXPECT_TRUE(view_->getSelectedRect().isNull());
}

TEST_F(VideoViewTest, KeepsTheRectangleOnTheSamePartOfThePictureAtAnotherSize)
{
    show(plain({1600, 1200}, Qt::green));
    view_->onDeskewChanged(2, true);
    drag(*view_, {100, 120}, {199, 219});
    const QRect before = view_->getSelectedRect();
    EXPECT_EQ(before, QRect(400, 480, 400, 400));
    window_.resize(640, 300);
    QCoreApplication::processEvents();
    EXPECT_EQ(view_->getSelectedRect(), before);
    window_.resize(800, 600);
    QCoreApplication::processEvents();
    EXPECT_EQ(view_->getSelectedRect(), before);
    EXPECT_EQ(picture().pixelColor(200, 300), QColor(Qt::red));
    show(plain({800, 600}, Qt::green)); // another resolution
    EXPECT_EQ(view_->getSelectedRect(), QRect(200, 240, 200, 200));
}

} // namespace
