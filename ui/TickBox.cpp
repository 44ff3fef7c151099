#include "TickBox.h"

#include "Look.h"

#include <QPainter>
#include <QPainterPath>

namespace {

// The tick in a square of side 1.
QPainterPath tick()
{
    QPainterPath path(QPointF(0.26, 0.52));
    path.lineTo(0.44, 0.70);
    path.lineTo(0.75, 0.32);
    return path;
}

} // namespace

bool TickBox::hitButton(const QPoint& pos) const
{
    // Without a text the style would take clicks on the indicator alone.
    return rect().contains(pos);
}

void TickBox::paintEvent(QPaintEvent* event)
{
    QCheckBox::paintEvent(event);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (hasFocus())
        Look::paintFocusRing(painter, rect());
    constexpr qreal side = 26;
    painter.translate(width() - side - 6, 6);
    painter.setPen(QPen(Look::text, 2));
    painter.setBrush(isChecked() ? Look::ticked : QColor(0, 0, 0, 60));
    painter.drawEllipse(QRectF(0, 0, side, side));
    if (!isChecked())
        return;
    painter.scale(side, side);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(Look::text, 0.11, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPath(tick());
}
