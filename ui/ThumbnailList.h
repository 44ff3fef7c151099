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
    void renameEntry(const QString& path, const QString& newPath);
    /// Whether the entry's file is being worked on, for all to see.
    void setBusy(const QString& path, bool isBusy);
    /// A key of the strip, which has the focus. What the list has no use for goes on to the strip's parents:
    /// sent as an event it would come back to the strip for ever.
    void press(QKeyEvent& key) { keyPressEvent(&key); }
    void setEntrySize(const QSize& size);     ///< px of one entry, its name included
    QSize pictureRoom() const;                ///< of an entry's picture, in px of the display
    void move(const QString& path, int step); ///< the entry becomes the current one
    /// Entries one below the other, numbered, to be dragged into another order; a line shows where one would
    /// fall.
    void becomePageList();
    bool isPageList() const { return isPageList_; }
    /// Files or entries are being dragged: the mouse that is held down means nothing else.
    bool isDragging() const { return isDragging_; }
    void setDragging(bool isDragging) { isDragging_ = isDragging; }

    static constexpr int busyRole = Qt::UserRole + 1;

protected:
    void startDrag(Qt::DropActions actions) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void showFallAt(int y);

    QSize entrySize_{180, 150};
    bool isPageList_ = false;
    bool isDragging_ = false;
    int fallsAt_ =
        -1; ///< where the line of the dragged entry is, px of the viewport; -1 while none is dragged
};
