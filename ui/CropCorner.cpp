#include "CropCorner.h"

#include "Look.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

namespace {

constexpr int side = 28; // px, room for a finger
constexpr int largeStep = 10;

} // namespace

CropCorner::CropCorner(const QString& name, QWidget* parent) : QWidget(parent)
{
    setFixedSize(side, side);
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::SizeAllCursor);
    setAccessibleName(name);
    setToolTip(name);
}

QPointF CropCorner::centre() const
{
    return QRectF(geometry()).center();
}

void CropCorner::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(hasFocus() ? Look::focus : Look::text, 3));
    painter.setBrush(QColor(8, 115, 140, 120));
    painter.drawEllipse(QRectF(rect()).adjusted(6, 6, -6, -6));
}

void CropCorner::mousePressEvent(QMouseEvent* event)
{
    grip_ = mapToParent(event->pos()) - centre();
}

void CropCorner::mouseMoveEvent(QMouseEvent* event)
{
    if (event->buttons() & Qt::LeftButton)
        Q_EMIT wanted(mapToParent(event->pos()) - grip_);
}

void CropCorner::keyPressEvent(QKeyEvent* event)
{
    const int step = event->modifiers() & Qt::ShiftModifier ? largeStep : 1;
    switch (event->key()) {
    case Qt::Key_Left:
        return Q_EMIT wanted(centre() - QPointF(step, 0));
    case Qt::Key_Right:
        return Q_EMIT wanted(centre() + QPointF(step, 0));
    case Qt::Key_Up:
        return Q_EMIT wanted(centre() - QPointF(0, step));
    case Qt::Key_Down:
        return Q_EMIT wanted(centre() + QPointF(0, step));
    default:
        QWidget::keyPressEvent(event);
    }
}
