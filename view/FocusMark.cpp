#include "FocusMark.h"

#include "Look.h"

#include <QPainter>

FocusMark::FocusMark(QWidget* view) : QWidget(view)
{
    constexpr int side = 72; // px
    setObjectName(QStringLiteral("FocusMark"));
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFixedSize(side, side);
    hide();
}

void FocusMark::showAt(const QPoint& middle)
{
    move(middle - rect().center());
    show();
    raise();
}

void FocusMark::paintEvent(QPaintEvent*)
{
    constexpr int leg = 16;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    painter.translate(QRectF(rect()).center());
    const qreal edge = width() / 2.0 - 3;
    for (const QPen& pen : {QPen(QColor(0, 0, 0, 150), 5), QPen(Look::focus, 2.5)}) {
        painter.setPen(pen);
        for (int corner = 0; corner < 4; ++corner) {
            const QPointF legs[] = {{-edge, -edge + leg}, {-edge, -edge}, {-edge + leg, -edge}};
            painter.drawPolyline(legs, 3);
            painter.rotate(90);
        }
    }
}
