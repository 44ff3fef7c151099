#include "ViewOverlay.h"

#include <QFontMetrics>
#include <QPainter>

namespace {

constexpr int infoHeight = 32;
constexpr int padding = 10;

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
