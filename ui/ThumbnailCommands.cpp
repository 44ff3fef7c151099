// What the user does with the strip: menu, keys, gestures and the commands behind them.
#include "Thumbnail.h"

#include "Dialogs.h"
#include "EntryActions.h"
#include "FileHandover.h"
#include "ListedFiles.h"
#include "NamedFiles.h"
#include "Settings.h"
#include "ThumbnailDeletion.h"
#include "ThumbnailList.h"

#include <QContextMenuEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QGestureEvent>
#include <QKeyEvent>
#include <QMenu>

void Thumbnail::onPopupCustomMenu(const QPoint&)
{
    fillMenu();
    menu_->popup(QCursor::pos());
}

Thumbnail::Target Thumbnail::target() const
{
    return {list_->pathAt(list_->currentRow()), list_->selectedPaths(), list_->paths()};
}

void Thumbnail::fillMenu()
{
    menu_->clear();
    const Target opened = target();
    const bool selected = !opened.selected.isEmpty();
    if (selected)
        menu_->addAction(tr("Open"), this, [=] { open(opened.current); });
    menu_->addAction(tr("Open Directory"), this, [=] { openFolderOf(opened.current); });
    menu_->addSeparator();
    menu_->addAction(tr("Add Image"), this, &Thumbnail::onAddImage);
    if (selected)
        menu_->addAction(tr("Delete"), this, [=] { remove(opened.selected, !keepsFiles_); });
    if (!opened.all.isEmpty())
        menu_->addAction(tr("Clear"), this, [=] { remove(opened.all, !keepsFiles_); });
    if (selected)
        addMoves(opened.current);
}

void Thumbnail::addMoves(const QString& path)
{
    menu_->addSeparator(); // drawn only when an entry follows
    const int row = list_->currentRow();
    if (row > 0)
        menu_->addAction(tr("Move up"), this, [=] { list_->move(path, -1); });
    if (row < Count() - 1)
        menu_->addAction(tr("Move down"), this, [=] { list_->move(path, 1); });
}

void Thumbnail::onOpen()
{
    open(target().current);
}

void Thumbnail::onItemDoubleClicked(QListWidgetItem* item)
{
    open(list_->pathAt(list_->row(item)));
}

/// Whether the listed file exists; the entry of one that does not goes, and the user is told.
bool Thumbnail::isThere(const QString& path)
{
    if (path.isEmpty() || QFile::exists(path))
        return !path.isEmpty();
    files_->check(path);
    say(tr("%1 is no longer there.").arg(namedFiles({path})));
    return false;
}

void Thumbnail::open(const QString& path)
{
    if (isThere(path))
        say(FileHandover::open(path));
}

void Thumbnail::onOpenDir()
{
    openFolderOf(target().current);
}

void Thumbnail::openFolderOf(const QString& path)
{
    const QString folder = path.isEmpty() ? settings::savePath(settings_) : QFileInfo(path).absolutePath();
    if (!folder.isEmpty())
        say(FileHandover::openFolder(folder));
}

void Thumbnail::onDelete()
{
    remove(target().selected, !keepsFiles_);
}

void Thumbnail::onClear()
{
    clearthumbnail(!keepsFiles_);
}

void Thumbnail::onAddImage()
{
    QFileDialog dialog(this, tr("Add Image"), settings::savePath(settings_));
    dialog.resize(320, 240);
    dialog.setNameFilter(tr("Image files(*.jpg *.png *.bmp)"));
    dialog.setFileMode(QFileDialog::ExistingFiles);
    dialog.setViewMode(QFileDialog::List);
    const QStringList files = Dialogs::instance().chooseFiles(dialog);
    for (const QString& file : files)
        AddImage(file, -1);
}

void Thumbnail::onMoveUp()
{
    list_->move(target().current, -1);
}

void Thumbnail::onMoveDown()
{
    list_->move(target().current, 1);
}

void Thumbnail::onPrint()
{
    const QString path = target().current;
    if (isThere(path))
        say(FileHandover::print(path, this));
}

void Thumbnail::onLongClicked(int, QListWidgetItem*, QPoint* pos)
{
    onPopupCustomMenu(pos ? *pos : QPoint());
}

bool Thumbnail::eventFilter(QObject* watched, QEvent* event)
{
    // The right button opens the menu by itself; held, it must not open it a second time.
    if (watched == list_->viewport() && event->type() == QEvent::MouseButtonPress)
        rightPressed_ = static_cast<QMouseEvent*>(event)->button() == Qt::RightButton;
    if (watched == list_->viewport() && event->type() == QEvent::Gesture && !rightPressed_ &&
        !list_->isDragging()) {
        const QGesture* hold = static_cast<QGestureEvent*>(event)->gesture(Qt::TapAndHoldGesture);
        if (hold && hold->state() == Qt::GestureFinished) {
            QPoint pos = list_->viewport()->mapFromGlobal(hold->hotSpot().toPoint());
            QListWidgetItem* item = list_->itemAt(pos);
            onLongClicked(list_->row(item), item, &pos);
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

void Thumbnail::takeOutSelected()
{
    onDelete();
    if (QListWidgetItem* next = list_->currentItem())
        next->setSelected(true);
}

/// Of the last deletion and the last edit of what is selected the later one.
void Thumbnail::undo()
{
    const bool isDeletionFirst = !isEditLast_ && deletion_->canUndo();
    if (isDeletionFirst || !actions_->undo())
        deletion_->undo();
}

void Thumbnail::keyPressEvent(QKeyEvent* event)
{
    if (event->matches(QKeySequence::Undo))
        return undo();
    if (event->matches(QKeySequence::SelectAll))
        return list_->selectAll();
    if (actions_->press(*event))
        return;
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        onOpen();
        break;
    case Qt::Key_Delete:
        if (keepsFiles_)
            takeOutSelected();
        break;
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Home:
    case Qt::Key_End:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
        list_->press(*event);
        break;
    default:
        QWidget::keyPressEvent(event);
    }
}

void Thumbnail::contextMenuEvent(QContextMenuEvent* event)
{
    if (event->reason() != QContextMenuEvent::Keyboard)
        return QWidget::contextMenuEvent(event);
    fillMenu();
    const QRect entry = list_->visualItemRect(list_->currentItem());
    menu_->popup(list_->viewport()->mapToGlobal(entry.center()));
}
