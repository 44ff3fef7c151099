#include "Thumbnail.h"

#include "Dialogs.h"
#include "ImagePrint.h"
#include "Settings.h"
#include "ThumbnailDelegate.h"
#include "ThumbnailLoader.h"

#include <QContextMenuEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QFileSystemWatcher>
#include <QGestureEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QPrinter>
#include <QScroller>
#include <QUrl>
#include <QVBoxLayout>

#include <cstdio>

namespace {

constexpr int nameHeight = 50; // px of an entry that its picture leaves to the name

QString pathOf(const QListWidgetItem* item)
{
    return item->data(Qt::UserRole).toString();
}

QString fileNameOf(const QString& path)
{
    const int slash = path.lastIndexOf(QLatin1Char('/'));
    return path.mid((slash >= 0 ? slash : path.lastIndexOf(QLatin1Char('\\'))) + 1);
}

QIcon iconOf(const QPixmap& picture)
{
    QIcon icon(picture);
    icon.addPixmap(picture, QIcon::Selected); // else the style would tint a selected picture
    return icon;
}

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
    : QWidget(parent), title_(new QLabel(tr("Thumbnail"), this)), list_(new QListWidget(this)),
      menu_(new QMenu(this)), watcher_(new QFileSystemWatcher(this)), loader_(new ThumbnailLoader(this))
{
    title_->setObjectName(QStringLiteral("LabelThumbnailTitle"));
    title_->setAlignment(Qt::AlignCenter);
    title_->setMargin(4);
    setUpList();
    setUpGestures();
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

void Thumbnail::setUpList()
{
    list_->setFocusPolicy(Qt::NoFocus);
    list_->setSelectionMode(QAbstractItemView::ExtendedSelection);
    list_->setResizeMode(QListView::Adjust);
    list_->setViewMode(QListView::IconMode);
    list_->setMovement(QListView::Static);
    list_->setSpacing(2);
    list_->setContextMenuPolicy(Qt::CustomContextMenu);
    list_->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    list_->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    list_->setWrapping(true);
    list_->setFlow(QListView::LeftToRight);
    list_->setIconSize(iconSize_);
    list_->setFrameShape(QFrame::NoFrame);
    list_->setMouseTracking(true); // hover
    list_->setAccessibleName(tr("Produced files"));
    list_->setItemDelegate(new ThumbnailDelegate(*this));
    list_->setStyleSheet(QStringLiteral(
        "QListWidget::item{border: none; }        QListWidget::item{color:rgb(255,255,255);"
        "padding-top:5px;padding-bottom:5px;background:rgb(51, 51, 51, 0%);        "
        "QListWidget::item:hover{color:rgbrgb(255,255,255);show-decoration-selected:0;"
        "background:rgb(51, 51, 51, 50%);}        "
        "QListWidget::item:selected{color:rgbrgb(255,255,255);background:rgb(51, 51, 51, 100%);"
        "padding:0px;margin:0px;}        "
        "QListWidget::item:selected:!active{color:rgbrgb(255,255,255);background:rgb(51, 51, 51, 100%);"
        "padding:0px;margin:0px;}    }"));
}

void Thumbnail::setUpGestures()
{
    list_->setAttribute(Qt::WA_AcceptTouchEvents);
    QScroller::grabGesture(list_, QScroller::LeftMouseButtonGesture);
    list_->viewport()->grabGesture(Qt::TapAndHoldGesture);
    list_->viewport()->installEventFilter(this);
}

void Thumbnail::AddImage(const QString& path, int index)
{
    if (GetIndex(path) >= 0)
        return;
    const QSize size = ThumbnailLoader::sizeOf(path);
    if (size.isEmpty()) {
        std::fprintf(stderr, "no readable picture in %s\n", qPrintable(path));
        return;
    }
    QPixmap blank(size.scaled(pictureRoom(), Qt::KeepAspectRatio).expandedTo(QSize(1, 1)));
    blank.fill(QColor(255, 255, 255, 40));
    AddImage(blank, path, index);
    loader_->load(path, pictureRoom());
}

void Thumbnail::showPicture(const QString& path, const QImage& picture)
{
    const int row = GetFilePaths().indexOf(path);
    if (row < 0)
        return;
    if (!picture.isNull()) {
        QPixmap pixmap = QPixmap::fromImage(picture);
        pixmap.setDevicePixelRatio(devicePixelRatioF());
        list_->item(row)->setIcon(iconOf(pixmap));
        return;
    }
    std::fprintf(stderr, "no readable picture in %s\n", qPrintable(path));
    RemoveItem(row, false);
}

void Thumbnail::AddImage(QPixmap& picture, const QString& path, int index)
{
    if (picture.isNull() || GetIndex(path) >= 0)
        return;
    watcher_->addPath(path);
    list_->clearSelection();
    auto* item = new QListWidgetItem(iconOf(scaledToEntry(picture)), fileNameOf(path));
    item->setSizeHint(iconSize_);
    item->setTextAlignment(Qt::AlignCenter);
    item->setData(Qt::UserRole, path);
    item->setToolTip(path);
    item->setFlags(item->flags() &
                   ~Qt::ItemIsDropEnabled); // a dragged one falls between others, not onto one
    const int row = index >= 0 && index <= list_->count() ? index : list_->count();
    list_->insertItem(row, item);
    list_->setCurrentRow(row);
    list_->scrollToItem(item);
    Q_EMIT updateui();
}

/// Of an entry's picture, in px of the display.
QSize Thumbnail::pictureRoom() const
{
    return (QSizeF(iconSize_.width(), iconSize_.height() - nameHeight) * devicePixelRatioF()).toSize();
}

QPixmap Thumbnail::scaledToEntry(const QPixmap& picture) const
{
    QPixmap scaled = picture.scaled(pictureRoom(), Qt::KeepAspectRatio, Qt::SmoothTransformation);
    scaled.setDevicePixelRatio(devicePixelRatioF());
    return scaled;
}

int Thumbnail::GetIndex(const QString& path) const
{
    const QString wanted = path.toLower();
    for (int row = 0; row < list_->count(); ++row) {
        if (pathOf(list_->item(row)).toLower() == wanted)
            return row;
    }
    return -1;
}

QStringList Thumbnail::GetFilePaths() const
{
    QStringList paths;
    for (int row = 0; row < list_->count(); ++row)
        paths.append(pathOf(list_->item(row)));
    return paths;
}

int Thumbnail::Count() const
{
    return list_->count();
}

void Thumbnail::RemoveItem(int index, bool deleteFile)
{
    const std::unique_ptr<QListWidgetItem> item(list_->takeItem(index));
    if (!item)
        return;
    const QString path = pathOf(item.get());
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
    iconSize_ = QSize(width, height);
    list_->setIconSize(iconSize_);
}

void Thumbnail::becomePageList()
{
    keepsFiles_ = true;
    // One below the other: only then can an entry be dragged between two others, above or below.
    list_->setViewMode(QListView::ListMode);
    list_->setFlow(QListView::TopToBottom);
    list_->setWrapping(false);
    list_->setSpacing(2);
    list_->setIconSize(iconSize_);
    list_->setDragDropMode(QAbstractItemView::InternalMove);
    list_->setDefaultDropAction(Qt::MoveAction);
    // A pressed mouse drags an entry now, a finger still scrolls.
    QScroller::ungrabGesture(list_);
    QScroller::grabGesture(list_, QScroller::TouchGesture);
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
    onItemDoubleClicked(list_->currentItem());
}

void Thumbnail::onItemDoubleClicked(QListWidgetItem* item)
{
    if (item && QFile::exists(pathOf(item)))
        openOnDesktop(pathOf(item));
}

void Thumbnail::onOpenDir()
{
    const QListWidgetItem* item = list_->currentItem();
    const QString folder = item ? QFileInfo(pathOf(item)).absolutePath() : settings::savePath(settings_);
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
    moveCurrent(-1);
}

void Thumbnail::onMoveDown()
{
    moveCurrent(1);
}

void Thumbnail::moveCurrent(int step)
{
    const int from = list_->currentRow();
    const int to = from + step;
    if (from < 0 || to < 0 || to >= list_->count())
        return;
    list_->insertItem(to, list_->takeItem(from));
    list_->setCurrentRow(to);
}

void Thumbnail::onPrint()
{
    const QListWidgetItem* item = list_->currentItem();
    if (!item || !QFile::exists(pathOf(item)))
        return;
    const QImage image(pathOf(item));
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
        loader_->load(path, pictureRoom());
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
