#include "PictureClicks.h"

#include "VideoView.h"

#include <QApplication>
#include <QMouseEvent>

PictureClicks::PictureClicks(VideoView& view, QObject* parent) : QObject(parent), view_(view)
{
    secondClick_.setSingleShot(true);
    connect(&secondClick_, &QTimer::timeout, this, [this] { Q_EMIT clicked(place_, pressedAt_); });
    view_.installEventFilter(this);
}

void PictureClicks::setEnabled(bool enabled)
{
    isEnabled_ = enabled;
    isClick_ = false;
    secondClick_.stop();
}

bool PictureClicks::eventFilter(QObject*, QEvent* event)
{
    const auto mouse = [event] { return static_cast<QMouseEvent*>(event); }; // for those of the mouse only
    switch (event->type()) {
    case QEvent::MouseButtonPress:
        isClick_ = isEnabled_ && mouse()->button() == Qt::LeftButton && !view_.isSelectionMode() &&
                   !view_.isFrozen();
        secondClick_.stop();
        pressedAt_ = mouse()->pos();
        break;
    case QEvent::MouseMove:
        if ((mouse()->pos() - pressedAt_).manhattanLength() >= QApplication::startDragDistance())
            isClick_ = false;
        break;
    case QEvent::MouseButtonDblClick:
        isClick_ = false;
        secondClick_.stop();
        break;
    case QEvent::MouseButtonRelease:
        if (std::exchange(isClick_, false))
            release(mouse()->pos());
        break;
    default:
        break;
    }
    return false;
}

void PictureClicks::release(const QPoint& at)
{
    const QRect picture(view_.GetImageCurrentPoint(), view_.GetImageCurrentSize());
    if (!picture.contains(at))
        return;
    const QPointF inside = at - picture.topLeft();
    place_ = QPointF(inside.x() / picture.width(), inside.y() / picture.height());
    secondClick_.start(QApplication::doubleClickInterval());
}
