#include "ThumbnailList.h"

#include <QScroller>

#include <algorithm>

namespace {

constexpr int nameHeight = 50; // px of an entry that its picture leaves to the name

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
    item.setToolTip(path);
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
    auto* item = new QListWidgetItem;
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
