#include "MoveVideoView.h"

#include "ViewOverlay.h"

#include <QCoreApplication>
#include <QPainter>

namespace {

const QColor ground(32, 32, 32);

/// Posted by the frame's thread: there is something new to paint.
QEvent::Type wakeUp()
{
    static const int type = QEvent::registerEventType();
    return QEvent::Type(type);
}

} // namespace

MoveVideoView::MoveVideoView(QWidget* parent) : QWidget(parent)
{
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAttribute(Qt::WA_TransparentForMouseEvents); // the window around it is dragged
}

void MoveVideoView::SetFrame(const QImage& frame)
{
    if (!frame.isNull() && mailbox_.put(frame))
        QCoreApplication::postEvent(this, new QEvent(wakeUp()));
}

void MoveVideoView::ClearFrame()
{
    mailbox_.take();
    frame_ = QImage();
    update();
}

void MoveVideoView::customEvent(QEvent* event)
{
    const QImage newest = event->type() == wakeUp() ? mailbox_.take() : QImage();
    if (newest.isNull())
        return;
    const QSize before = frame_.size();
    frame_ = newest;
    if (frame_.size() != before)
        Q_EMIT frameSizeChanged();
    Q_EMIT frameTaken();
    update();
}

void MoveVideoView::SetCaption(const QString& caption)
{
    if (caption_ == caption)
        return;
    caption_ = caption;
    update();
}

void MoveVideoView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), ground);
    if (frame_.isNull())
        overlay::drawInfo(painter, rect(), tr("Please waiting..."));
    else
        paintPicture(painter);
    if (!caption_.isEmpty())
        overlay::drawCaption(painter, rect(), caption_);
}

QRect MoveVideoView::picturePlace() const
{
    if (frame_.isNull())
        return {};
    QRect place(QPoint(), frame_.size().scaled(size(), Qt::KeepAspectRatio));
    place.moveCenter(rect().center());
    return place;
}

void MoveVideoView::paintPicture(QPainter& painter)
{
    const QRect place = picturePlace();
    const QSize shown = place.size() * devicePixelRatioF();
    painter.drawImage(place, scaler_.scale(frame_, shown, QRect(QPoint(), shown)));
}
