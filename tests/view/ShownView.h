#pragma once

#include "MouseAndFrames.h"
#include "ToolBar.h"
#include "VideoView.h"

#include <gtest/gtest.h>

#include <QTest>
#include <QVBoxLayout>
#include <QWheelEvent>

inline void wheel(QWidget& widget, const QPoint& angle)
{
    const QPointF at = widget.rect().center();
    QWheelEvent event(at, at, QPoint(), angle, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&widget, &event);
}

inline void drag(QWidget& widget, const QPoint& from, const QPoint& to)
{
    mouse(widget, QEvent::MouseButtonPress, from);
    mouse(widget, QEvent::MouseMove, (from + to) / 2);
    mouse(widget, QEvent::MouseMove, to);
    mouse(widget, QEvent::MouseButtonRelease, to);
}

/// A view of 400 x 300 in a window of the same size.
class VideoViewTest : public ::testing::Test
{
protected:
    VideoViewTest()
    {
        auto* layout = new QVBoxLayout(&window_);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->addWidget(view_);
        window_.resize(400, 300);
        window_.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&window_));
    }

    void show(const QImage& frame)
    {
        view_->SetImageData(frame);
        QCoreApplication::processEvents();
    }

    QImage picture() { return view_->grab().toImage(); }

    QWidget window_;
    VideoView* view_ = new VideoView(&window_);
    ToolBar* bar_ = view_->findChild<ToolBar*>();
};
