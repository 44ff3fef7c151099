#pragma once

#include <QStyledItemDelegate>

/// Draws an entry of the strip: the picture above, its name below, a frame for the selected, the hovered and,
/// while the strip has the keyboard, the current one; the number of a page, a veil over what is being worked
/// on.
class ThumbnailDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    /// `strip` is the widget whose keyboard focus counts; it lives longer than this object.
    explicit ThumbnailDelegate(QWidget& strip) : QStyledItemDelegate(&strip), strip_(strip) {}

    void
    paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;

private:
    static void paintNumber(QPainter& painter, const QRect& picture, const QString& number);
    static void paintVeil(QPainter& painter, const QRect& picture);
    void paintFrame(QPainter& painter, const QStyleOptionViewItem& option, bool current) const;

    QWidget& strip_;
};
