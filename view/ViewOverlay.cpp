#include "ViewOverlay.h"

#include <QFontMetrics>
#include <QPainter>
#include <QPainterPath>

namespace {

constexpr int infoHeight = 32;
constexpr int padding = 10;
const QColor goodColour(0, 210, 90),
    warningColour(255, 179, 0); // apart for every kind of sight, by lightness too

QPen guidePen()
{
    return QPen(Qt::red, 3, Qt::SolidLine, Qt::SquareCap, Qt::BevelJoin);
}

constexpr int wrapped = Qt::AlignCenter | Qt::TextWordWrap;

QRect padded(const QRect& text)
{
    return text.adjusted(-padding, -padding / 2, padding, padding / 2);
}

void drawText(QPainter& painter, const QRect& box, const QString& text, int flags)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0, 0, 0, 180));
    painter.drawRoundedRect(box, 6, 6);
    painter.setPen(Qt::white);
    painter.drawText(box.adjusted(padding, padding / 2, -padding, -padding / 2), flags, text);
    painter.restore();
}

} // namespace

namespace overlay {

void drawInfo(QPainter& painter, const QRect& view, const QString& text)
{
    const QRect band(view.left(), view.center().y() - infoHeight / 2, view.width(), infoHeight);
    painter.setPen(Qt::red);
    painter.drawText(band, Qt::AlignCenter, text);
}

void drawBookLine(QPainter& painter, const QRect& view, const QRect& picture)
{
    const int middle = picture.left() + picture.width() / 2;
    painter.setPen(guidePen());
    painter.drawLine(middle, view.top(), middle, view.bottom());
}

void drawSelection(QPainter& painter, const QRect& rectangle)
{
    painter.setPen(guidePen());
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(rectangle);
}

void drawPageOutline(QPainter& painter, const QPolygonF& corners, bool isGood, qreal covered)
{
    constexpr qreal line = 3, rim = 2; // px
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    const QColor ground(20, 20, 20, isGood ? 150 : 255); // between dashes nothing else shows
    painter.setPen(QPen(ground, qMax(line + rim, covered), Qt::SolidLine, Qt::SquareCap, Qt::RoundJoin));
    painter.drawPolygon(corners);
    QPen pen(isGood ? goodColour : warningColour, qMax(line, covered - rim));
    pen.setJoinStyle(Qt::RoundJoin);
    pen.setCapStyle(Qt::FlatCap);
    if (!isGood)
        pen.setDashPattern({4, 3});
    painter.setPen(pen);
    painter.drawPolygon(corners);
    painter.restore();
}

void drawWarning(QPainter& painter, const QRect& box)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    QPainterPath triangle(QPointF(box.center().x() + 0.5, box.top()));
    triangle.lineTo(box.right() + 1, box.bottom());
    triangle.lineTo(box.left(), box.bottom());
    triangle.closeSubpath();
    painter.fillPath(triangle, warningColour);
    const qreal stroke = box.width() / 8.0;
    painter.setPen(QPen(Qt::black, stroke, Qt::SolidLine, Qt::RoundCap));
    const qreal x = box.center().x() + 0.5;
    painter.drawLine(QPointF(x, box.top() + 0.4 * box.height()), QPointF(x, box.top() + 0.62 * box.height()));
    painter.drawPoint(QPointF(x, box.top() + 0.82 * box.height()));
    painter.restore();
}

void drawNotice(QPainter& painter, const QRect& view, const QString& text)
{
    constexpr int flags = Qt::AlignCenter | Qt::TextWrapAnywhere; // paths have no blanks to break at
    const QRect room = view.adjusted(4 * padding, padding, -4 * padding, -3 * padding);
    QRect box = padded(painter.fontMetrics().boundingRect(room, flags, text)) & view;
    box.moveBottom(room.bottom());
    drawText(painter, box, text, flags);
}

void drawCaption(QPainter& painter, const QRect& view, const QString& text)
{
    QRect box(QPoint(), boxSize(painter.fontMetrics(), view.size(), text));
    box.moveCenter(view.center());
    box.moveBottom(view.bottom());
    drawBox(painter, box, text);
}

QSize boxSize(const QFontMetrics& metrics, const QSize& room, const QString& text)
{
    const QRect inside(QPoint(), room - QSize(2 * padding, padding));
    return padded(metrics.boundingRect(inside, wrapped, text)).size();
}

void drawBox(QPainter& painter, const QRect& box, const QString& text)
{
    drawText(painter, box, text, wrapped);
}

} // namespace overlay
