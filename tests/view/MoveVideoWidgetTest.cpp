#include "MoveVideoWidget.h"

#include "MouseAndFrames.h"
#include "MoveVideoView.h"
#include "ToolBar.h"
#include "VideoView.h"

#include <gtest/gtest.h>

#include <QLineEdit>
#include <QTest>
#include <QVBoxLayout>

#include <thread>

namespace {

/// The second camera over a preview of 600 x 450 that shows a picture of the same shape.
class MoveVideoWidgetTest : public ::testing::Test
{
protected:
    MoveVideoWidgetTest()
    {
        auto* layout = new QVBoxLayout(&window);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->addWidget(view);
        layout->addWidget(edit);
        window.resize(600, 450 + edit->sizeHint().height() + layout->spacing());
        window.show();
        edit->setFocus();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
        view->SetImageData(plain({640, 480}, Qt::darkGray));
        QCoreApplication::processEvents();
        QObject::connect(view, &VideoView::pictureMoved, inset, &MoveVideoWidget::followMain);
        inset->followMain(main());
    }
    QRect main() const { return {view->GetImageCurrentPoint(), view->GetImageCurrentSize()}; }
    void drag(const QPoint& by)
    {
        const QPoint start = inset->pos() + QPoint(10, 10);
        const auto at = [&](const QPoint& inView) { return inView - inset->pos(); };
        mouse(*inset, QEvent::MouseButtonPress, at(start));
        mouse(*inset, QEvent::MouseMove, at(start + by / 2));
        mouse(*inset, QEvent::MouseMove, at(start + by));
        mouse(*inset, QEvent::MouseButtonRelease, at(start + by));
    }
    QColor shownAt(const QPoint& point)
    {
        QCoreApplication::processEvents();
        return view->grab().toImage().pixelColor(point);
    }

    QWidget window;
    VideoView* view = new VideoView;
    QLineEdit* edit = new QLineEdit;
    MoveVideoWidget* inset = new MoveVideoWidget(view);
};

} // namespace

TEST_F(MoveVideoWidgetTest, ShowsTheNewestFrameOverThePicture)
{
    inset->showAt(0);
    std::thread camera([this] {
        for (const auto colour : {Qt::green, Qt::green, Qt::blue})
            inset->SetMvDataFrame(plain({320, 240}, colour));
        inset->SetMvDataFrame(QImage());
    });
    camera.join();
    const QPoint middle = inset->geometry().center();
    EXPECT_EQ(shownAt(middle), QColor(Qt::blue));
    EXPECT_EQ(inset->geometry(), QRect(main().topLeft(), QSize(200, 150)));
    inset->SetMvDataFrame(plain({1920, 1080}, Qt::red));
    EXPECT_EQ(shownAt(inset->geometry().center()), QColor(Qt::red));
    inset->SetCaption(QStringLiteral("Face"));
    EXPECT_EQ(shownAt(inset->geometry().center()), QColor(Qt::red)) << "the caption stands below";
    EXPECT_NE(shownAt({inset->geometry().center().x(), inset->geometry().bottom() - 6}), QColor(Qt::red));
    EXPECT_EQ(inset->size(), QSize(200, 112)) << "the new frame's shape";
    EXPECT_TRUE(edit->hasFocus());
    EXPECT_FALSE(inset->accessibleName().isEmpty());
}

TEST_F(MoveVideoWidgetTest, TakesACornerAndKeepsItWhenTheWindowGrows)
{
    inset->SetMvDataFrame(plain({320, 240}, Qt::blue));
    QCoreApplication::processEvents();
    const QPoint first(0, 0), last(550, 375);
    for (const auto& [corner, place] : {std::pair(7, first),
                                        {0, first},
                                        {1, {0, 450 - 75}},
                                        {2, {600 - 100 + 50, 0}},
                                        {-1, first},
                                        {3, last}}) {
        inset->showAt(corner);
        EXPECT_EQ(inset->GetOffsetPos(), place) << corner;
    }
    window.resize(window.width() * 2, window.height() + 450);
    QCoreApplication::processEvents();
    ASSERT_GT(main().width(), 1000);
    EXPECT_EQ(inset->width(), main().width() / 3);
    EXPECT_EQ(inset->x(), main().x() + main().width() - inset->width() / 2 + 50);
}

TEST_F(MoveVideoWidgetTest, IsDraggedOnThePictureAndCarriedAlong)
{
    inset->SetMvDataFrame(plain({320, 240}, Qt::blue));
    QCoreApplication::processEvents();
    inset->showAt(3);
    const QPoint start = inset->pos();
    const QPoint grip(10, 10);
    mouse(*inset, QEvent::MouseButtonPress, grip, Qt::RightButton);
    mouse(*inset, QEvent::MouseMove, grip - QPoint(60, 40));
    EXPECT_EQ(inset->pos(), start) << "by the left button only";
    mouse(*inset, QEvent::MouseButtonPress, grip);
    mouse(*inset, QEvent::MouseButtonRelease, grip, Qt::RightButton); // of another button
    mouse(*inset, QEvent::MouseMove, grip - QPoint(20, 10));
    mouse(*inset, QEvent::MouseButtonRelease, grip);
    EXPECT_EQ(inset->pos(), start - QPoint(20, 10));
    drag({-40, -30});
    EXPECT_EQ(inset->pos(), start + QPoint(-60, -40));
    drag({-5000, -5000});
    EXPECT_EQ(inset->GetOffsetPos(), QPoint(0, 0));
    drag({300, 225});
    window.resize(window.width() * 2, window.height() + 450);
    QCoreApplication::processEvents();
    ASSERT_EQ(main().size(), QSize(1200, 900));
    EXPECT_EQ(inset->GetOffsetPos(), QPoint(600, 450)) << "the same spot of the picture";
    EXPECT_EQ(inset->size(), QSize(400, 300));
    QMouseEvent move(QEvent::MouseMove, {50, 50}, Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(inset, &move);
    EXPECT_EQ(inset->GetOffsetPos(), QPoint(600, 450)) << "no button is down";
    const QRect place = inset->geometry();
    view->ClearFrame();
    EXPECT_EQ(inset->geometry(), place) << "the main camera is gone, not this one";
}

TEST_F(MoveVideoWidgetTest, ObeysTheGivenPlaceBelowTheToolBarAndKeepsThePreviewFromTheMouse)
{
    EXPECT_FALSE(inset->isVisible());
    inset->showAt(3);
    inset->ShowMvVideoWgt(30, 40, 160, 120);
    EXPECT_TRUE(inset->isVisible());
    EXPECT_EQ(inset->geometry(), QRect(30, 40, 160, 120));
    inset->SetMvDataFrame(plain({320, 160}, Qt::blue)); // of another shape
    QCoreApplication::processEvents();
    EXPECT_EQ(inset->pos(), QPoint(30, 40)) << "no corner holds it any more";
    inset->ShowMvVideoWgt(30, 40, 160, 120);
    EXPECT_EQ(shownAt({110, 50}), QColor(32, 32, 32)) << "not stretched";
    EXPECT_EQ(shownAt({110, 100}), QColor(Qt::blue));
    EXPECT_NE(shownAt({31, 100}), QColor(Qt::blue)) << "an edge keeps the two pictures apart";
    inset->MoveMvVideoWgt(70, 90);
    EXPECT_EQ(inset->pos(), QPoint(70, 90));
    inset->SetMainSize({400, 300});
    inset->SetMainPos({20, 10});
    inset->SetOffsetPos({5, 6});
    EXPECT_EQ(inset->pos(), QPoint(25, 16));
    EXPECT_EQ(inset->GetOffsetPos(), QPoint(5, 6));
    inset->SetMainPos({120, 110});
    EXPECT_EQ(inset->pos(), QPoint(125, 116));

    MoveVideoWidget early(view);
    early.ShowMvVideoWgt(5, 6, 70, 50);
    early.followMain(main()); // the first picture of the main camera
    EXPECT_EQ(early.geometry(), QRect(5, 6, 70, 50));
    MoveVideoView plainView;
    plainView.SetFrame(plain({32, 16}, Qt::blue));
    plainView.ClearFrame(); // before it was painted
    QCoreApplication::processEvents();
    EXPECT_TRUE(plainView.frameSize().isEmpty());
    early.hide();

    inset->ShowMvVideoWgt(200, 0, 200, 150);
    auto* bar = view->findChild<ToolBar*>();
    bar->show();
    ASSERT_TRUE(bar->geometry().intersects(inset->geometry()));
    const QPoint shared = (bar->geometry() & inset->geometry()).center();
    EXPECT_NE(view->childAt(shared), inset);
    EXPECT_EQ(view->childAt(inset->geometry().center()), inset);
    bool doubleClicked = false;
    QObject::connect(view, &VideoView::doubClickSign, [&] { doubleClicked = true; });
    QTest::mouseDClick(window.windowHandle(), Qt::LeftButton, {}, inset->geometry().center());
    EXPECT_FALSE(doubleClicked);
}
