#include "FaceVideo.h"

#include "Look.h"

#include <QPainter>

namespace {

constexpr qreal frameWidth = 3;

} // namespace

FaceVideo::FaceVideo(QWidget* parent) : QWidget(parent)
{
    setAttribute(Qt::WA_OpaquePaintEvent);
}

void FaceVideo::SetImageData(const QImage& image)
{
    if (!image.isNull() && mailbox_.put(image))
        QMetaObject::invokeMethod(this, &FaceVideo::takeFrame, Qt::QueuedConnection);
}

void FaceVideo::takeFrame()
{
    const QImage image = mailbox_.take();
    if (image.isNull())
        return;
    frame_ = QPixmap::fromImage(image);
    update();
}

void FaceVideo::setPlaceholder(const QString& text)
{
    placeholder_ = text;
    setAccessibleDescription(text);
    update();
}

void FaceVideo::clear()
{
    mailbox_.take();
    frame_ = {};
    update();
}

QRectF FaceVideo::place() const
{
    QRectF place(QPointF(), QSizeF(frame_.size()).scaled(size(), Qt::KeepAspectRatio));
    place.moveCenter(QRectF(rect()).center());
    return place;
}

void FaceVideo::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), Qt::black);
    if (frame_.isNull()) {
        painter.setPen(Look::text);
        painter.drawText(rect().adjusted(20, 20, -20, -20), Qt::AlignCenter | Qt::TextWordWrap, placeholder_);
        return;
    }
    const QRectF place = this->place();
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawPixmap(place, frame_, frame_.rect());
    const QRectF face = findFace_ ? findFace_() : QRectF();
    if (face.isEmpty())
        return;
    painter.setPen(QPen(Look::focus, frameWidth));
    painter.translate(place.topLeft());
    const qreal scale = place.width() / frame_.width();
    painter.drawRect(QRectF(face.topLeft() * scale, face.size() * scale) & QRectF(QPointF(), place.size()));
}
