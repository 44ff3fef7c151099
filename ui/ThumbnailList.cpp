#include "ThumbnailList.h"

#include "Look.h"
#include "PlainTip.h"

#include <QCoreApplication>
#include <QDragMoveEvent>
#include <QPainter>
#include <QScroller>

#include <algorithm>

namespace {

constexpr int nameHeight = 50; // px of an entry that its picture leaves to the name
constexpr int lineHeight = 4;  // px

/// Of pages a screen reader says the number too.
class Entry : public QListWidgetItem
{
public:
    QVariant data(int role) const override
    {
        const auto* list = static_cast<ThumbnailList*>(listWidget());
        if (role != Qt::AccessibleTextRole || !list || !list->isPageList())
            return QListWidgetItem::data(role);
        return QCoreApplication::translate("ThumbnailList", "Page %1: %2")
            .arg(list->row(this) + 1)
            .arg(text());
    }
};

QString pathOf(const QListWidgetItem* item)
{
    return item ? item->data(Qt::UserRole).toString() : QString();
}

QString fileNameOf(const QString& path)
{
    const int slash = path.lastIndexOf(QLatin1Char('/'));
    return path.mid((slash >= 0 ? slash : path.lastIndexOf(QLatin1Char('\\'))) + 1);
}

void setPath(QListWidgetItem& item, const QString& path)
{
    item.setText(fileNameOf(path));
    item.setData(Qt::UserRole, path);
    item.setToolTip(plainTip(path));
}

QIcon iconOf(const QPixmap& picture)
{
    QIcon icon(picture);
    icon.addPixmap(picture, QIcon::Selected); // else the style would tint a selected picture
    return icon;
}

} // namespace

ThumbnailList::ThumbnailList(QWidget* parent) : QListWidget(parent)
{
    setFocusPolicy(Qt::NoFocus);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setResizeMode(QListView::Adjust);
    setViewMode(QListView::IconMode);
    setMovement(QListView::Static);
    setSpacing(2);
    setContextMenuPolicy(Qt::CustomContextMenu);
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    setWrapping(true);
    setFlow(QListView::LeftToRight);
    setIconSize(entrySize_);
    setFrameShape(QFrame::NoFrame);
    setMouseTracking(true); // hover
    setStyleSheet(QStringLiteral(
        "QListWidget::item{border: none; }        QListWidget::item{color:rgb(255,255,255);"
        "padding-top:5px;padding-bottom:5px;background:rgb(51, 51, 51, 0%);        "
        "QListWidget::item:hover{color:rgbrgb(255,255,255);show-decoration-selected:0;"
        "background:rgb(51, 51, 51, 50%);}        "
        "QListWidget::item:selected{color:rgbrgb(255,255,255);background:rgb(51, 51, 51, 100%);"
        "padding:0px;margin:0px;}        "
        "QListWidget::item:selected:!active{color:rgbrgb(255,255,255);background:rgb(51, 51, 51, 100%);"
        "padding:0px;margin:0px;}    }"));
    setAttribute(Qt::WA_AcceptTouchEvents);
    QScroller::grabGesture(this, QScroller::LeftMouseButtonGesture);
    viewport()->grabGesture(Qt::TapAndHoldGesture);
}

void ThumbnailList::insertEntry(const QPixmap& picture, const QString& path, int index)
{
    clearSelection();
    auto* item = new Entry;
    setPath(*item, path);
    item->setSizeHint(entrySize_);
    item->setTextAlignment(Qt::AlignCenter);
    item->setFlags(item->flags() &
                   ~Qt::ItemIsDropEnabled); // a dragged one falls between others, not onto one
    const int row = index >= 0 && index <= count() ? index : count();
    insertItem(row, item);
    setPicture(row, picture.scaled(pictureRoom(), Qt::KeepAspectRatio, Qt::SmoothTransformation));
    setCurrentRow(row);
    scrollToItem(item);
}

void ThumbnailList::setPicture(int row, const QPixmap& picture)
{
    QPixmap sharp = picture;
    sharp.setDevicePixelRatio(devicePixelRatioF());
    if (QListWidgetItem* entry = item(row))
        entry->setIcon(iconOf(sharp));
}

int ThumbnailList::rowOf(const QString& path) const
{
    const QString wanted = path.toLower();
    for (int row = 0; row < count(); ++row) {
        if (pathAt(row).toLower() == wanted)
            return row;
    }
    return -1;
}

int ThumbnailList::rowOfExactly(const QString& path) const
{
    for (int row = 0; row < count(); ++row) {
        if (pathAt(row) == path)
            return row;
    }
    return -1;
}

QString ThumbnailList::pathAt(int row) const
{
    return pathOf(item(row));
}

QStringList ThumbnailList::paths() const
{
    QStringList paths;
    for (int row = 0; row < count(); ++row)
        paths.append(pathAt(row));
    return paths;
}

QStringList ThumbnailList::selectedPaths() const
{
    QStringList paths;
    for (int row = 0; row < count(); ++row) {
        if (item(row)->isSelected())
            paths.append(pathAt(row));
    }
    return paths;
}

std::unique_ptr<QListWidgetItem> ThumbnailList::takeEntry(int row)
{
    return std::unique_ptr<QListWidgetItem>(takeItem(row));
}

void ThumbnailList::putBack(std::unique_ptr<QListWidgetItem> entry, int row, const QString& path)
{
    setPath(*entry, path);
    row = std::min(row, count());
    insertItem(row, entry.release());
    setCurrentRow(row, QItemSelectionModel::Select);
}

void ThumbnailList::renameEntry(const QString& path, const QString& newPath)
{
    if (QListWidgetItem* entry = item(rowOfExactly(path)))
        setPath(*entry, newPath);
}

void ThumbnailList::setBusy(const QString& path, bool isBusy)
{
    if (QListWidgetItem* entry = item(rowOfExactly(path)))
        entry->setData(busyRole, isBusy);
}

void ThumbnailList::setEntrySize(const QSize& size)
{
    entrySize_ = size;
    setIconSize(size);
}

QSize ThumbnailList::pictureRoom() const
{
    return (QSizeF(entrySize_.width(), entrySize_.height() - nameHeight) * devicePixelRatioF()).toSize();
}

void ThumbnailList::move(const QString& path, int step)
{
    const int from = rowOfExactly(path);
    const int to = from + step;
    if (from < 0 || to < 0 || to >= count())
        return;
    insertItem(to, takeItem(from));
    setCurrentRow(to);
}

void ThumbnailList::becomePageList()
{
    isPageList_ = true;
    // One below the other: only then can an entry be dragged between two others, above or below.
    setViewMode(QListView::ListMode);
    setFlow(QListView::TopToBottom);
    setWrapping(false);
    setSpacing(2);
    setIconSize(entrySize_);
    setDragDropMode(QAbstractItemView::InternalMove);
    setDefaultDropAction(Qt::MoveAction);
    // A pressed mouse drags an entry now, a finger still scrolls.
    QScroller::ungrabGesture(this);
    QScroller::grabGesture(this, QScroller::TouchGesture);
}

void ThumbnailList::showFallAt(int y)
{
    fallsAt_ = y;
    viewport()->update();
}

void ThumbnailList::startDrag(Qt::DropActions actions)
{
    setDragging(true);
    QListWidget::startDrag(actions);
    setDragging(false);
}

void ThumbnailList::dragMoveEvent(QDragMoveEvent* event)
{
    QListWidget::dragMoveEvent(event);
    if (!event->isAccepted() || count() == 0)
        return showFallAt(-1);
    // As the drop itself: above the middle of an entry before it, below it behind it, below all at the end.
    const QModelIndex under = indexAt(event->pos());
    const QRect entry = visualRect(under.isValid() ? under : model()->index(count() - 1, 0));
    const bool isBefore = under.isValid() && event->pos().y() < entry.center().y();
    showFallAt(isBefore ? entry.top() - spacing() : entry.bottom() + 1 + spacing());
}

void ThumbnailList::dragLeaveEvent(QDragLeaveEvent* event)
{
    QListWidget::dragLeaveEvent(event);
    showFallAt(-1);
}

void ThumbnailList::dropEvent(QDropEvent* event)
{
    QListWidget::dropEvent(event);
    showFallAt(-1);
}

void ThumbnailList::paintEvent(QPaintEvent* event)
{
    QListWidget::paintEvent(event);
    if (fallsAt_ < 0)
        return;
    QPainter painter(viewport());
    const int top = std::clamp(fallsAt_ - lineHeight / 2, 0, viewport()->height() - lineHeight);
    painter.fillRect(QRect(0, top, viewport()->width(), lineHeight), Look::focus);
}
