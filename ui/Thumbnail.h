#pragma once

#include "ConfigSettings.h"

#include <QStringList>
#include <QWidget>

class QFileSystemWatcher;
class QLabel;
class QListWidgetItem;
class QMenu;
class ThumbnailList;
class ThumbnailLoader;

/// The strip that lists every file produced since the start, as a picture with its name. An entry is its
/// file's full path; it goes when the file goes. GUI thread only.
class Thumbnail : public QWidget
{
    Q_OBJECT

public:
    explicit Thumbnail(QWidget* parent = nullptr);
    ~Thumbnail() override;

    /// Lists `path` with `picture`, at row `index` or, for an index outside the list, at the end, and makes
    /// it current. A null picture and a path that is listed already (in any letter case) change nothing.
    void AddImage(QPixmap& picture, const QString& path, int index);
    /// The same with the picture in the file itself; a file without a readable picture is not listed (one
    /// line on standard error). The picture is made on another thread: a blank of its shape stands for it at
    /// first, and an entry whose picture turns out to be broken goes again.
    void AddImage(const QString& path, int index);

    int GetIndex(const QString& path) const; ///< row, letter case ignored; -1 when not listed
    QStringList GetFilePaths() const;        ///< top to bottom
    int Count() const;
    void RemoveItem(int index, bool deleteFile);
    void clearthumbnail(bool deleteFiles);
    void onClear(bool deleteFiles);
    void SetIconSize(int width, int height); ///< px of one entry, its name included
    /// Makes the strip a list of pages to be put together: entries are dragged into another order, taking one
    /// out (Delete, the menu) leaves its file on the disk.
    void becomePageList();

Q_SIGNALS:
    void updateui(); ///< an entry was inserted

public Q_SLOTS:
    void onPopupCustomMenu(const QPoint& pos);
    void onOpen();
    void onOpenDir();
    void onDelete(); ///< removes the selected entries and, except in a page list, their files
    void onClear();  ///< removes all entries and, except in a page list, their files
    void onAddImage();
    void onMoveUp();
    void onMoveDown();
    void onPrint(); ///< prints the current picture through the system's print dialog
    void onItemDoubleClicked(QListWidgetItem* item);
    void onFileChanged(const QString& path);
    void onLongClicked(int row, QListWidgetItem* item, QPoint* pos);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void fillMenu();
    static void open(const QString& path);
    void takeOutSelected();
    void showPicture(const QString& path, const QImage& picture);

    QLabel* title_;
    ThumbnailList* list_;
    QMenu* menu_;
    QFileSystemWatcher* watcher_;
    ThumbnailLoader* loader_;
    bool keepsFiles_ = false;
    bool rightPressed_ = false; ///< by the last press of a mouse button
    ConfigSettings settings_;
};
