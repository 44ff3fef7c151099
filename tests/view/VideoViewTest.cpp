#include "ShownView.h"
#include "TimerEnd.h"

#include <QComboBox>
#include <QPushButton>
#include <QSignalSpy>

#include <atomic>
#include <functional>
#include <thread>
#include <vector>

namespace {

int redPixels(const QImage& image)
{
    int count = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            count += image.pixelColor(x, y) == QColor(Qt::red);
    return count;
}

TEST_F(VideoViewTest, ShowsTheInfoTextInRedUntilAFrameComesAndAfterItWent)
{
    const auto redRows = [this] {
        QRect rows;
        const QImage image = picture();
        for (int y = 0; y < image.height(); ++y)
            if (redPixels(image.copy(0, y, image.width(), 1)))
                rows |= QRect(0, y, 1, 1);
        return rows;
    };
    EXPECT_FALSE(redRows().isNull()) << "the text of a new view";
    view_->SetShowInfo(QStringLiteral("No found device!"));
    EXPECT_GE(redRows().top(), 150 - 16);
    EXPECT_LE(redRows().bottom(), 150 + 16);
    show(plain({64, 48}, Qt::green));
    EXPECT_TRUE(redRows().isNull());
    EXPECT_EQ(picture().pixelColor(200, 150), QColor(Qt::green));
    show(QImage());
    EXPECT_EQ(picture().pixelColor(200, 150), QColor(Qt::green)) << "a null picture is ignored";
    view_->ClearFrame();
    EXPECT_FALSE(redRows().isNull());
    EXPECT_TRUE(view_->GetImageCurrentSize().isEmpty());

    view_->SetImageData(plain({64, 48}, Qt::green));
    view_->ClearFrame();
    QCoreApplication::processEvents();
    EXPECT_TRUE(view_->GetImageCurrentSize().isEmpty());
    show(plain({64, 48}, Qt::blue)); // and the next camera's frames are shown again
    EXPECT_EQ(picture().pixelColor(200, 150), QColor(Qt::blue));
}

TEST_F(VideoViewTest, ZoomsByWheelAndKeysWithinItsLimitsAndPansByDragging)
{
    show(plain({400, 300}, Qt::green));
    for (int step = 0; step < 11; ++step)
        wheel(*view_, {0, -120});
    EXPECT_EQ(view_->zoom(), 0.1);
    EXPECT_EQ(view_->GetImageCurrentSize(), QSize(40, 30));
    wheel(*view_, {0, 120});
    wheel(*view_, {0, 120});
    wheel(*view_, {30, 0}); // sideways counts as out
    wheel(*view_, {0, 0});  // the end of a gesture is no turn
    EXPECT_EQ(view_->zoom(), 0.2);
    for (int step = 0; step < 30; ++step)
        view_->SetHotKeyZoom(1);
    EXPECT_EQ(view_->zoom(), 2.0);
    view_->SetHotKeyZoom(2);
    view_->SetHotKeyZoom(7);
    EXPECT_EQ(view_->zoom(), 1.9);
    view_->SetViewAdap();
    EXPECT_EQ(view_->GetImageCurrentSize(), QSize(400, 300));

    view_->SetHotKeyZoom(1);
    const QPoint before = view_->GetImageCurrentPoint();
    drag(*view_, {200, 150}, {190, 143});
    EXPECT_EQ(view_->GetImageCurrentPoint() - before, QPoint(-10, -7));
    mouse(*view_, QEvent::MouseMove, {10, 10}); // not pressed
    EXPECT_EQ(view_->GetImageCurrentPoint() - before, QPoint(-10, -7));
    mouse(*view_, QEvent::MouseButtonPress, {200, 150});
    mouse(*view_, QEvent::MouseButtonRelease, {200, 150}, Qt::RightButton); // of another button
    mouse(*view_, QEvent::MouseMove, {203, 152});
    mouse(*view_, QEvent::MouseButtonRelease, {200, 150});
    EXPECT_EQ(view_->GetImageCurrentPoint() - before, QPoint(-7, -5));
    mouse(*view_, QEvent::MouseButtonPress, {200, 150});
    view_->SetMouseStatue(false);
    mouse(*view_, QEvent::MouseMove, {230, 180}); // what it held is let go
    drag(*view_, {200, 150}, {220, 170});
    wheel(*view_, {0, 120});
    EXPECT_EQ(view_->GetImageCurrentPoint() - before, QPoint(-7, -5));
    EXPECT_EQ(view_->zoom(), 1.1);
    QSignalSpy moved(view_, &VideoView::pictureMoved);
    for (int i = 0; i < 2; ++i)
        view_->SetViewAdap();
    ASSERT_EQ(moved.count(), 1) << "the second time it lies there already";
    EXPECT_EQ(moved[0][0].toRect(), QRect(0, 0, 400, 300));
}

TEST_F(VideoViewTest, DrawsTheBookLineThroughTheMiddleOfThePictureAndFollowsItsSize)
{
    show(plain({300, 300}, Qt::green));
    drag(*view_, {200, 150}, {230, 150});
    EXPECT_EQ(redPixels(picture()), 0);
    view_->SetBooklineEnable(true);
    EXPECT_TRUE(view_->GetBooklineEnable());
    const QImage image = picture();
    for (const int y : {0, 150, 299})
        EXPECT_EQ(image.pixelColor(230, y), QColor(Qt::red));
    EXPECT_EQ(redPixels(image), 3 * 300);

    view_->SetBooklineEnable(false);
    view_->SetViewAdap();
    show(plain({1600, 1200}, Qt::green));
    EXPECT_EQ(view_->GetImageCurrentSize(), QSize(400, 300));
    show(plain({1200, 1600}, Qt::blue)); // turned
    EXPECT_EQ(view_->GetImageCurrentSize(), QSize(225, 300));
    EXPECT_EQ(view_->GetImageCurrentPoint(), QPoint(87, 0));
    const QImage turned = picture();
    EXPECT_EQ(turned.pixelColor(90, 10), QColor(Qt::blue));
    EXPECT_NE(turned.pixelColor(84, 10), QColor(Qt::blue));
}

TEST_F(VideoViewTest, KeepsAFrozenPictureUntilItIsToggledAgain)
{
    view_->toggleFreeze();
    EXPECT_FALSE(view_->isFrozen()) << "there is nothing to freeze";
    show(plain({400, 300}, Qt::green));
    view_->ShowStill(plain({400, 300}, Qt::red));
    const QImage live = picture();
    EXPECT_EQ(live.pixelColor(200, 150), QColor(Qt::green)) << "a still that comes too late";
    QSignalSpy clicked(view_, &VideoView::clickFreezSign);
    Q_EMIT bar_->clickFreezSign();
    EXPECT_EQ(clicked.count(), 1);
    EXPECT_TRUE(view_->isFrozen());
    show(plain({400, 300}, Qt::blue));
    EXPECT_EQ(picture().pixelColor(200, 150), QColor(Qt::green));
    EXPECT_NE(picture(), live) << "a sign says that it is a still";
    auto* save = view_->findChild<QPushButton*>(QStringLiteral("buttonSaveFrozen"));
    EXPECT_FALSE(save->isVisible()) << "the still of the camera has not come yet";
    view_->ShowStill(plain({400, 300}, Qt::red));
    EXPECT_EQ(picture().pixelColor(200, 150), QColor(Qt::red));
    EXPECT_TRUE(save->isVisible());
    QWidget* bar = save->parentWidget();
    const QPoint from = bar->mapTo(&window_, QPoint(3, bar->height() / 2)); // beside the button
    QTest::mousePress(window_.windowHandle(), Qt::LeftButton, {}, from);
    QTest::mouseMove(window_.windowHandle(), from + QPoint(60, 40));
    QTest::mouseRelease(window_.windowHandle(), Qt::LeftButton, {}, from + QPoint(60, 40));
    EXPECT_EQ(view_->GetImageCurrentPoint(), QPoint(0, 0)) << "no hold on the picture";
    window_.resize(330, 300);
    QCoreApplication::processEvents();
    EXPECT_TRUE(view_->rect().contains(bar->geometry()));
    EXPECT_TRUE(bar->rect().contains(save->geometry()));
    window_.resize(400, 300);
    for (int i = 0; i < 2; ++i)
        Q_EMIT bar_->clickFreezSign();
    EXPECT_TRUE(view_->isFrozen());
    EXPECT_FALSE(save->isVisible()) << "nor has that of this one";
    Q_EMIT bar_->clickFreezSign();
    show(plain({400, 300}, Qt::blue));
    EXPECT_EQ(picture().pixelColor(200, 150), QColor(Qt::blue));
    view_->toggleFreeze();
    view_->ClearFrame();
    EXPECT_FALSE(view_->isFrozen());
}

TEST_F(VideoViewTest, ShowsANoticeForAWhile)
{
    show(plain({400, 300}, Qt::green));
    const QImage before = picture();
    view_->ShowNotice(QStringLiteral("/a/folder/that/cannot/be/written/IMAGE_000.jpg could not be saved"));
    const QImage during = picture();
    EXPECT_NE(during, before);
    EXPECT_EQ(during.copy(0, 0, 400, 150), before.copy(0, 0, 400, 150)) << "it stands below";
    auto* timer = view_->findChild<QTimer*>(QStringLiteral("noticeTimer"));
    ASSERT_TRUE(timer && timer->isActive());
    EXPECT_GE(timer->interval(), 3000) << "long enough to be read";
    const int usual = timer->interval();
    timer->start(100 * usual);
    view_->ShowNotice(QStringLiteral("another one"));
    EXPECT_EQ(timer->interval(), usual) << "each has its own time";
    endNow(*timer);
    EXPECT_EQ(picture(), before);
}

TEST_F(VideoViewTest, PassesTheToolBarOnAndCountsCroppingOptionsFromNought)
{
    QSignalSpy deskew(view_, &VideoView::clickDeskewSign);
    QSignalSpy rotate(view_, &VideoView::clickRotateSign);
    QSignalSpy zoom(view_, &VideoView::clickZoomSign);
    QSignalSpy device(view_, &VideoView::checkDeviceSign);
    show(plain({400, 300}, Qt::green));
    Q_EMIT bar_->clickDeskewSign(3, true);
    EXPECT_EQ(deskew.value(0), QVariantList({2, true}));
    EXPECT_TRUE(view_->isSelectionMode());
    Q_EMIT bar_->clickDeskewSign(3, false);
    Q_EMIT bar_->clickDeskewSign(1, true);
    EXPECT_EQ(deskew.value(2), QVariantList({0, true}));
    EXPECT_FALSE(view_->isSelectionMode());
    Q_EMIT bar_->clickZoomSign(1);
    Q_EMIT bar_->clickZoomSign(1);
    Q_EMIT bar_->clickZoomSign(2);
    EXPECT_EQ(view_->zoom(), 1.1);
    EXPECT_EQ(zoom.count(), 3);
    Q_EMIT bar_->clickAdapSign();
    EXPECT_EQ(view_->zoom(), 1.0);
    for (const auto& change :
         std::vector<std::function<void()>>{[&] { Q_EMIT bar_->clickRotateSign(3); },
                                            [&] { Q_EMIT bar_->checkDeviceSign(1); },
                                            [&] { Q_EMIT bar_->checkResolutionSign(1); }}) {
        view_->toggleFreeze();
        EXPECT_TRUE(view_->isFrozen());
        change();
        EXPECT_FALSE(view_->isFrozen()) << "one who changes the picture wants to see it change";
    }
    EXPECT_EQ(rotate.value(0), QVariantList({3}));
    EXPECT_EQ(device.value(0), QVariantList({1}));
    device.clear();

    view_->SetDeviceNames({QStringLiteral("one"), QStringLiteral("two")});
    view_->SetDeviceDefaultIdx(1);
    EXPECT_EQ(view_->GetCurrentDeviceIndex(), 1);
    EXPECT_EQ(device.count(), 0);
    view_->SetResolutions({QStringLiteral("1600*1200"), QStringLiteral("640*480")});
    view_->SetDefaultResolution(1);
    EXPECT_EQ(view_->GetResolutionCurrentText(view_->GetResolutionCurrentIndex()), QStringLiteral("640*480"));
    EXPECT_EQ(view_->GetResolutionCurrentCount(), 2);
    view_->onGetEnableTools(false);
    EXPECT_FALSE(bar_->isEnabled());
}

TEST_F(VideoViewTest, ShowsTheToolBarToTheMouseAndToTheTabKey)
{
    const auto send = [this](QEvent::Type type) {
        QEvent event(type);
        QCoreApplication::sendEvent(view_, &event);
    };
    EXPECT_FALSE(bar_->isVisible());
    send(QEvent::Enter);
    EXPECT_TRUE(bar_->isVisible());
    EXPECT_EQ(bar_->y(), 0);
    EXPECT_LE(qAbs(bar_->geometry().center().x() - view_->rect().center().x()), 1);
    EXPECT_LE(bar_->width(), view_->width());
    send(QEvent::Leave);
    EXPECT_FALSE(bar_->isVisible());

    QPushButton elsewhere(&window_);
    elsewhere.show();
    window_.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window_));
    elsewhere.setFocus();
    QTest::keyClick(&elsewhere, Qt::Key_A);
    QTest::mouseClick(&elsewhere, Qt::LeftButton);
    view_->setFocus(Qt::TabFocusReason); // as after the focused control was disabled
    EXPECT_FALSE(bar_->isVisible());
    QTest::keyClick(view_, Qt::Key_Backtab, Qt::ShiftModifier);
    QTest::keyClick(&elsewhere, Qt::Key_Space);
    elsewhere.setFocus();
    view_->setFocus(Qt::TabFocusReason);
    EXPECT_TRUE(bar_->isVisible());
    elsewhere.setFocus(Qt::TabFocusReason);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !bar_->isVisible(); }));
    view_->setFocus(Qt::OtherFocusReason);
    EXPECT_FALSE(bar_->isVisible());
    QTest::keyClick(view_, Qt::Key_Tab);
    EXPECT_TRUE(bar_->isAncestorOf(QApplication::focusWidget()));
    send(QEvent::Leave);
    EXPECT_TRUE(bar_->isVisible()) << "the keyboard is in it";
    elsewhere.setFocus(Qt::TabFocusReason);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !bar_->isVisible(); }));

    view_->SetDeviceNames({QStringLiteral("one"), QStringLiteral("two")});
    auto* devices = bar_->findChild<QComboBox*>(QStringLiteral("comboDevice"));
    send(QEvent::Enter);
    QTest::mouseClick(devices, Qt::LeftButton);
    ASSERT_TRUE(QTest::qWaitFor([&] { return QApplication::activePopupWidget() != nullptr; }));
    send(QEvent::Leave);
    EXPECT_TRUE(bar_->isVisible()) << "its list is open";
    devices->hidePopup();
    send(QEvent::Leave);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !bar_->isVisible(); }));
    EXPECT_TRUE(view_->hasFocus()) << "and no other control of the window gets the keys";
}

TEST_F(VideoViewTest, GoesToTheFullScreenAndBackToItsPlace)
{
    show(plain({300, 300}, Qt::green));
    const Qt::WindowStates state = window_.windowState();
    QSignalSpy doubleClicked(view_, &VideoView::doubClickSign);
    mouse(*view_, QEvent::MouseButtonDblClick, {200, 150});
    for (const Qt::MouseButton other : {Qt::RightButton, Qt::MiddleButton})
        mouse(*view_, QEvent::MouseButtonDblClick, {200, 150}, other);
    EXPECT_EQ(doubleClicked.count(), 1);

    const auto isBack = [&] {
        return !view_->isWindow() && view_->isVisible() && view_->size() == QSize(400, 300);
    };
    const std::vector<std::function<void()>> waysBack{
        [&] { view_->toggleFullscreen(); },
        [&] { QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape); }, // whoever has the keys
        [&] { view_->close(); },
    };
    QPushButton elsewhere(&window_);
    elsewhere.show();
    for (const std::function<void()>& goBack : waysBack) {
        elsewhere.setFocus();
        view_->toggleFullscreen();
        EXPECT_TRUE(QTest::qWaitFor([&] { return view_->hasFocus(); })) << "for the Escape key";
        ASSERT_TRUE(
            QTest::qWaitFor([&] { return view_->isFullScreen() && view_->size() == QSize(800, 600); }));
        EXPECT_EQ(view_->GetImageCurrentSize(), QSize(800, 800)) << "the picture covers the screen";
        view_->onDeskewChanged(2, true);
        drag(*view_, {160, 60}, {239, 139}); // the picture lies at 0, -100
        const QRect part = view_->getSelectedRect();
        EXPECT_EQ(part, QRect(60, 60, 30, 30));
        goBack();
        EXPECT_TRUE(QTest::qWaitFor(isBack));
        EXPECT_EQ(view_->getSelectedRect(), part);
        EXPECT_EQ(view_->GetImageCurrentSize(), QSize(300, 300));
        EXPECT_EQ(window_.windowState(), state);
        EXPECT_TRUE(window_.isVisible());
    }
    QTest::keyClick(view_, Qt::Key_Escape); // has no meaning now
    EXPECT_TRUE(isBack());
}

TEST_F(VideoViewTest, TakesFramesFromThreadsWhileItPaints)
{
    std::atomic<int> lent{0};
    std::atomic<int> most{0};
    std::atomic<bool> stop{false};
    std::vector<std::thread> cameras;
    for (const int value : {50, 200}) {
        cameras.emplace_back([&, value] {
            while (!stop) {
                view_->SetImageData(loan(lent, uchar(value)));
                view_->SetBooklineEnable(false);
                view_->getSelectedRect();
                const int now = lent;
                if (now > most)
                    most = now;
            }
        });
    }
    for (int painted = 0; painted < 20; ++painted) {
        QCoreApplication::processEvents();
        if (view_->GetImageCurrentSize().isEmpty())
            continue;
        const QColor colour = picture().pixelColor(200, 150);
        EXPECT_TRUE(colour == QColor(50, 50, 50) || colour == QColor(200, 200, 200)) << colour.red();
    }
    window_.hide(); // hidden, frames must not pile up either
    for (int round = 0; round < 20; ++round)
        QCoreApplication::processEvents();
    stop = true;
    for (std::thread& camera : cameras)
        camera.join();
    // Three in the view, and each thread's own besides the one that it has just replaced.
    EXPECT_LE(most, 7);
    view_->ClearFrame();
    EXPECT_EQ(lent, 0);
}

} // namespace
