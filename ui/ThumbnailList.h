#pragma once

#include <QListWidget>
#include <QSize>
#include <QStringList>

#include <memory>

/// The entries of a strip: a picture with a name, each for one file, known by its full path. GUI thread only.
class ThumbnailList : public QListWidget
{
public:
    explicit ThumbnailList(QWidget* parent);

    /// At row `index` or, for an index outside the list, at the end; the entry becomes the current one.
    void insertEntry(const QPixmap& picture, const QString& path, int index);
    /// `picture` in px of the display. A row outside the list is ignored.
    void setPicture(int row, const QPixmap& picture);
    int rowOf(const QString& path) const; ///< letter case ignored; -1 when not listed
    QString pathAt(int row) const;        ///< empty outside the list
    int rowOfExactly(const QString& path) const;
    QStringList paths() const; ///< top to bottom
    QStringList selectedPaths() const;
    /// Null outside the list.
    std::unique_ptr<QListWidgetItem> takeEntry(int row);
    /// Puts a taken entry back at `row`, or at the end of a list that is shorter now, as the entry of `path`.
    void putBack(std::unique_ptr<QListWidgetItem> entry, int row, const QString& path);
    void setEntrySize(const QSize& size);     ///< px of one entry, its name included
    QSize pictureRoom() const;                ///< of an entry's picture, in px of the display
    void move(const QString& path, int step); ///< the entry becomes the current one
    /// Entries one below the other, to be dragged into another order.
    void becomePageList();

private:
    QSize entrySize_{180, 150};
};
