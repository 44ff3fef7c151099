#include "Thumbnail.h"

#include "Dialogs.h"
#include "ImagePrint.h"
#include "Settings.h"
#include "ThumbnailDelegate.h"
#include "ThumbnailList.h"
#include "ThumbnailLoader.h"

#include <QContextMenuEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QFileSystemWatcher>
#include <QGestureEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QPrinter>
#include <QUrl>
#include <QVBoxLayout>

#include <cstdio>

namespace {

void removeFile(const QString& path)
{
    QFile file(path);
    if (file.exists() && !file.remove())
        std::fprintf(stderr, "cannot remove %s: %s\n", qPrintable(path), qPrintable(file.errorString()));
}

void openOnDesktop(const QString& path)
{
    if (!Dialogs::instance().openUrl(QUrl::fromLocalFile(path)))
        std::fprintf(stderr, "nothing opens %s\n", qPrintable(path));
}

} // namespace

Thumbnail::Thumbnail(QWidget* parent)
    : QWidget(parent), title_(new QLabel(tr("Thumbnail"), this)), list_(new ThumbnailList(this)),
      menu_(new QMenu(this)), watcher_(new QFileSystemWatcher(this)), loader_(new ThumbnailLoader(this))
{
    title_->setObjectName(QStringLiteral("LabelThumbnailTitle"));
    title_->setAlignment(Qt::AlignCenter);
    title_->setMargin(4);
    list_->setAccessibleName(tr("Produced files"));
    list_->setItemDelegate(new ThumbnailDelegate(*this));
    list_->viewport()->installEventFilter(this);
    setFocusPolicy(Qt::StrongFocus); // the list itself takes none
    setAccessibleName(tr("Thumbnail"));

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(1, 1, 1, 1);
    layout->setSpacing(0);
    layout->addWidget(title_);
    layout->addWidget(list_);

    connect(this, &Thumbnail::updateui, list_->viewport(), QOverload<>::of(&QWidget::update));
    connect(list_, &QWidget::customContextMenuRequested, this, &Thumbnail::onPopupCustomMenu);
    connect(list_, &QListWidget::itemDoubleClicked, this, &Thumbnail::onItemDoubleClicked);
    connect(watcher_, &QFileSystemWatcher::fileChanged, this, &Thumbnail::onFileChanged);
    connect(loader_, &ThumbnailLoader::loaded, this, &Thumbnail::showPicture);
}

Thumbnail::~Thumbnail() = default;

void Thumbnail::AddImage(const QString& path, int index)
{
    if (GetIndex(path) >= 0)
        return;
    const QSize size = ThumbnailLoader::sizeOf(path);
    if (size.isEmpty()) {
        std::fprintf(stderr, "no readable picture in %s\n", qPrintable(path));
        return;
    }
    QPixmap blank(size.scaled(list_->pictureRoom(), Qt::KeepAspectRatio).expandedTo(QSize(1, 1)));
    blank.fill(QColor(255, 255, 255, 40));
    AddImage(blank, path, index);
    loader_->load(path, list_->pictureRoom());
}

void Thumbnail::showPicture(const QString& path, const QImage& picture)
{
    const int row = GetFilePaths().indexOf(path);
    if (row < 0)
        return;
    if (!picture.isNull())
        return list_->setPicture(row, QPixmap::fromImage(picture));
    std::fprintf(stderr, "no readable picture in %s\n", qPrintable(path));
    RemoveItem(row, false);
}

void Thumbnail::AddImage(QPixmap& picture, const QString& path, int index)
{
    if (picture.isNull() || GetIndex(path) >= 0)
        return;
    watcher_->addPath(path);
    list_->insertEntry(picture, path, index);
    Q_EMIT updateui();
}

int Thumbnail::GetIndex(const QString& path) const
{
    return list_->rowOf(path);
}

QStringList Thumbnail::GetFilePaths() const
{
    return list_->paths();
}

int Thumbnail::Count() const
{
    return list_->count();
}

void Thumbnail::RemoveItem(int index, bool deleteFile)
{
    const QString path = list_->takePath(index);
    if (path.isEmpty())
        return;
    watcher_->removePath(path);
    if (deleteFile)
        removeFile(path);
}

void Thumbnail::clearthumbnail(bool deleteFiles)
{
    loader_->dropWaiting();
    while (list_->count() > 0)
        RemoveItem(list_->count() - 1, deleteFiles);
}

void Thumbnail::onClear(bool deleteFiles)
{
    clearthumbnail(deleteFiles);
}

void Thumbnail::SetIconSize(int width, int height)
{
    list_->setEntrySize(QSize(width, height));
}

void Thumbnail::becomePageList()
{
    keepsFiles_ = true;
    list_->becomePageList();
}

void Thumbnail::onPopupCustomMenu(const QPoint&)
{
    fillMenu();
    menu_->popup(QCursor::pos());
}

void Thumbnail::fillMenu()
{
    menu_->clear();
    const bool selected = !list_->selectedItems().isEmpty();
    const int row = list_->currentRow();
    if (selected)
        menu_->addAction(tr("Open"), this, &Thumbnail::onOpen);
    menu_->addAction(tr("Open Directory"), this, &Thumbnail::onOpenDir);
    menu_->addSeparator();
    menu_->addAction(tr("Add Image"), this, &Thumbnail::onAddImage);
    if (selected)
        menu_->addAction(tr("Delete"), this, &Thumbnail::onDelete);
    if (Count() > 0)
        menu_->addAction(tr("Clear"), this, QOverload<>::of(&Thumbnail::onClear));
    if (!selected)
        return;
    menu_->addSeparator(); // drawn only when an entry follows
    if (row > 0)
        menu_->addAction(tr("Move up"), this, &Thumbnail::onMoveUp);
    if (row < Count() - 1)
        menu_->addAction(tr("Move down"), this, &Thumbnail::onMoveDown);
}

void Thumbnail::onOpen()
{
    open(list_->pathAt(list_->currentRow()));
}

void Thumbnail::onItemDoubleClicked(QListWidgetItem* item)
{
    open(list_->pathAt(list_->row(item)));
}

void Thumbnail::open(const QString& path)
{
    if (!path.isEmpty() && QFile::exists(path))
        openOnDesktop(path);
}

void Thumbnail::onOpenDir()
{
    const QString file = list_->pathAt(list_->currentRow());
    const QString folder = file.isEmpty() ? settings::savePath(settings_) : QFileInfo(file).absolutePath();
    if (!folder.isEmpty())
        openOnDesktop(folder);
}

void Thumbnail::onDelete()
{
    const QList<QListWidgetItem*> selected = list_->selectedItems();
    for (const QListWidgetItem* item : selected)
        RemoveItem(list_->row(item), !keepsFiles_);
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
    for (const QString& file : files) {
        if (QFile::exists(file))
            AddImage(file, -1);
    }
}

void Thumbnail::onMoveUp()
{
    list_->moveCurrent(-1);
}

void Thumbnail::onMoveDown()
{
    list_->moveCurrent(1);
}

void Thumbnail::onPrint()
{
    const QString path = list_->pathAt(list_->currentRow());
    if (path.isEmpty() || !QFile::exists(path))
        return;
    const QImage image(path);
    if (image.isNull()) {
        Dialogs::warn(this, tr("Only pictures can be printed."));
        return;
    }
    QPrinter printer(QPrinter::HighResolution);
    ImagePrint::orient(printer, image);
    if (Dialogs::instance().choosePrinter(printer, this) && !ImagePrint::print(printer, image))
        Dialogs::warn(this, tr("The picture could not be printed."));
}

void Thumbnail::onFileChanged(const QString& path)
{
    const int row = GetFilePaths().indexOf(path);
    if (row < 0)
        return;
    if (!QFile::exists(path)) {
        RemoveItem(row, false);
        return;
    }
    watcher_->addPath(path); // a file that was replaced has dropped out of the watch
    if (!ThumbnailLoader::sizeOf(path).isEmpty())
        loader_->load(path, list_->pictureRoom());
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
    if (watched == list_->viewport() && event->type() == QEvent::Gesture && !rightPressed_) {
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

void Thumbnail::keyPressEvent(QKeyEvent* event)
{
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
        QCoreApplication::sendEvent(list_, event);
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

void Thumbnail::focusInEvent(QFocusEvent* event)
{
    QWidget::focusInEvent(event);
    list_->viewport()->update();
}

void Thumbnail::focusOutEvent(QFocusEvent* event)
{
    QWidget::focusOutEvent(event);
    list_->viewport()->update();
}
