#include "ThumbnailDelegate.h"

#include "Look.h"
#include "ThumbnailList.h"

#include <QAbstractItemView>
#include <QIcon>
#include <QPainter>

#include <algorithm>

void ThumbnailDelegate::paint(QPainter* painter,
                              const QStyleOptionViewItem& option,
                              const QModelIndex& index) const
{
    const auto* view = qobject_cast<const QAbstractItemView*>(option.widget);
    const bool current = view && strip_.hasFocus() && view->currentIndex() == index;
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    paintFrame(*painter, option, current);
    painter->restore();

    constexpr int edge = 6;
    const int nameHeight = option.fontMetrics.height() + 4;
    const QRect inside = option.rect.adjusted(edge, edge, -edge, -edge);
    const QRect picture = inside.adjusted(0, 0, 0, -nameHeight);
    const QRect name(inside.left(), inside.bottom() - nameHeight + 1, inside.width(), nameHeight);
    index.data(Qt::DecorationRole).value<QIcon>().paint(painter, picture, Qt::AlignCenter);
    painter->setPen(Look::text);
    const QString text =
        option.fontMetrics.elidedText(index.data().toString(), Qt::ElideMiddle, name.width());
    painter->drawText(name, Qt::AlignCenter | Qt::TextSingleLine, text);
    const auto* list = dynamic_cast<const ThumbnailList*>(view);
    if (list && list->isPageList())
        paintNumber(*painter, picture, QString::number(index.row() + 1));
    if (index.data(ThumbnailList::busyRole).toBool())
        paintVeil(*painter, picture);
}

void ThumbnailDelegate::paintNumber(QPainter& painter, const QRect& picture, const QString& number)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const QFontMetrics metrics(painter.font());
    const int height = metrics.height() + 4;
    const QRect plate(picture.topLeft(),
                      QSize(std::max(height, metrics.horizontalAdvance(number) + 12), height));
    painter.setPen(Look::strip);
    painter.setBrush(QColor(16, 60, 68, 230));
    painter.drawRoundedRect(QRectF(plate).adjusted(0.5, 0.5, -0.5, -0.5), 4, 4);
    painter.setPen(Look::text);
    painter.drawText(plate, Qt::AlignCenter, number);
    painter.restore();
}

void ThumbnailDelegate::paintVeil(QPainter& painter, const QRect& picture)
{
    painter.fillRect(picture, QColor(16, 60, 68, 170));
    painter.setPen(Look::text);
    painter.drawText(picture, Qt::AlignCenter | Qt::TextWordWrap, tr("Working..."));
}

void ThumbnailDelegate::paintFrame(QPainter& painter, const QStyleOptionViewItem& option, bool current) const
{
    const QRectF frame = QRectF(option.rect).adjusted(1.5, 1.5, -1.5, -1.5);
    const bool selected = option.state & QStyle::State_Selected;
    const bool hovered = option.state & QStyle::State_MouseOver;
    painter.setPen(Qt::NoPen);
    if (selected)
        painter.setBrush(QColor(51, 51, 51, 150));
    else if (hovered)
        painter.setBrush(QColor(51, 51, 51, 70));
    painter.drawRoundedRect(frame, 5, 5);
    if (!selected && !current)
        return;
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(current ? Look::focus : Look::strip, 2));
    painter.drawRoundedRect(frame, 5, 5);
}
