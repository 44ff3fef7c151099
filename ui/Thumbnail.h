#pragma once

#include "ConfigSettings.h"

#include <QSize>
#include <QStringList>
#include <QWidget>

class QFileSystemWatcher;
class QLabel;
class QListWidget;
class QListWidgetItem;
class QMenu;

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
    /// line on standard error).
    void AddImage(const QString& path, int index);

    int GetIndex(const QString& path) const; ///< row, letter case ignored; -1 when not listed
    QStringList GetFilePaths() const;        ///< top to bottom
    int Count() const;
    void RemoveItem(int index, bool deleteFile);
    void clearthumbnail(bool deleteFiles);
    void onClear(bool deleteFiles);
    void SetIconSize(int width, int height); ///< px of one entry, its name included

Q_SIGNALS:
    void updateui(); ///< an entry was inserted

public Q_SLOTS:
    void onPopupCustomMenu(const QPoint& pos);
    void onOpen();
    void onOpenDir();
    void onDelete(); ///< removes the selected entries and their files
    void onClear();  ///< removes all entries and their files
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
    void setUpList();
    void setUpGestures();
    void fillMenu();
    void moveCurrent(int step);
    QPixmap scaledToEntry(const QPixmap& picture) const;
    QPixmap readPicture(const QString& path) const;

    QLabel* title_;
    QListWidget* list_;
    QMenu* menu_;
    QFileSystemWatcher* watcher_;
    QSize iconSize_{180, 150};
    bool rightPressed_ = false; ///< by the last press of a mouse button
    ConfigSettings settings_;
};
