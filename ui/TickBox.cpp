#include "TickBox.h"

#include "Look.h"

#include <QPainterPath>
#include <QStyleOptionButton>
#include <QStylePainter>

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

void TickBox::paintEvent(QPaintEvent*)
{
    QStylePainter painter(this);
    painter.setRenderHints(QPainter::Antialiasing |
                           QPainter::SmoothPixmapTransform); // for the style's picture
    QStyleOptionButton option;
    initStyleOption(&option);
    painter.drawControl(QStyle::CE_CheckBox, option);
    if (hasFocus())
        Look::paintFocusRing(painter, rect());
    constexpr qreal side = 22;
    painter.translate(width() - side - 5, 5);
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
