#pragma once

#include "ConfigSettings.h"

#include <QStringList>
#include <QWidget>

class EntryActions;
class ListedFiles;
class NoticeBar;
class QLabel;
class QListWidgetItem;
class QMenu;
class ThumbnailDeletion;
class ThumbnailList;

/// The strip that lists every file produced since the start, as a picture with its name. An entry is its
/// file's full path; it goes when the file goes. Pictures can be turned, cropped and set straight, every file
/// renamed and dragged elsewhere; files of other programs can be dropped on it. Deleted files can be brought
/// back for ten seconds. What fails is said at the strip's lower edge. GUI thread only.
class Thumbnail : public QWidget
{
    Q_OBJECT

public:
    explicit Thumbnail(QWidget* parent = nullptr);
    ~Thumbnail() override;

    /// Lists `path` with `picture`, at row `index` or, for an index outside the list, at the end, and makes
    /// it current. A null picture and a path that is listed already (in any letter case) change nothing.
    void AddImage(QPixmap& picture, const QString& path, int index);
    /// The same with the picture in the file itself; a file without a readable picture is not listed, and
    /// the user is told. The picture is made on another thread: a blank of its shape stands for it at first,
    /// and an entry whose picture turns out to be broken goes again. One that becomes unreadable later stays.
    void AddImage(const QString& path, int index);

    int GetIndex(const QString& path) const; ///< row, letter case ignored; -1 when not listed
    QStringList GetFilePaths() const;        ///< top to bottom
    int Count() const;
    /// An entry whose file should be deleted and cannot be stays. The same with the next two.
    void RemoveItem(int index, bool deleteFile);
    void clearthumbnail(bool deleteFiles);
    void onClear(bool deleteFiles);
    void SetIconSize(int width, int height); ///< px of one entry, its name included
    /// Makes the strip a list of pages to be put together: entries are dragged into another order, taking one
    /// out (Delete, the menu) leaves its file on the disk, and a file that goes is told of.
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
    /// What a command acts on; a menu keeps what it was opened for, whatever is listed and selected
    /// meanwhile.
    struct Target
    {
        QString current;
        QStringList selected;
        QStringList all;
    };
    void connectFiles();
    Target target() const;
    void fillMenu();
    void addMoves(const QString& path);
    void open(const QString& path);
    void openFolderOf(const QString& path);
    void remove(const QStringList& paths, bool deleteFiles);
    void takeOutSelected();
    void undo();
    bool isThere(const QString& path);
    void leaveOut(const QString& path);
    void say(const QString& text);

    QLabel* title_;
    ThumbnailList* list_;
    QMenu* menu_;
    NoticeBar* notice_;
    ListedFiles* files_;
    ThumbnailDeletion* deletion_;
    EntryActions* actions_;
    QStringList leftOut_; ///< named in the present notice
    bool keepsFiles_ = false;
    bool isEditLast_ = false;   ///< an edit came after the last deletion
    bool rightPressed_ = false; ///< by the last press of a mouse button
    ConfigSettings settings_;
};
