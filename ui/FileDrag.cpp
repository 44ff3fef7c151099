#include "FileDrag.h"

#include "Dialogs.h"
#include "ThumbnailList.h"

#include <QApplication>
#include <QDrag>
#include <QDropEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QUrl>

FileDrag::FileDrag(ThumbnailList& list, QWidget& strip) : QObject(&strip), list_(list)
{
    strip.setAcceptDrops(true);
    strip.installEventFilter(this);
    list.viewport()->installEventFilter(this);
}

bool FileDrag::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::MouseButtonPress:
        if (watched == list_.viewport())
            press(*static_cast<QMouseEvent*>(event));
        return false;
    case QEvent::MouseMove:
        return watched == list_.viewport() && move(*static_cast<QMouseEvent*>(event));
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop:
        return take(*static_cast<QDropEvent*>(event));
    default:
        return false;
    }
}

void FileDrag::press(const QMouseEvent& event)
{
    pressedAt_ = event.pos();
    const bool mayGo = event.button() == Qt::LeftButton && !list_.isPageList();
    pressed_ = mayGo ? list_.pathAt(list_.row(list_.itemAt(event.pos()))) : QString();
}

/// What the kinetic scroller takes for itself, movements along the strip, does not arrive here.
bool FileDrag::move(const QMouseEvent& event)
{
    if (pressed_.isEmpty() || !(event.buttons() & Qt::LeftButton))
        return false;
    if ((event.pos() - pressedAt_).manhattanLength() >= QApplication::startDragDistance())
        start();
    return true; // no rubber band
}

void FileDrag::start()
{
    QStringList paths = list_.selectedPaths();
    if (!paths.contains(pressed_))
        paths = QStringList{pressed_};
    const QListWidgetItem* entry = list_.item(list_.rowOfExactly(pressed_));
    pressed_.clear();
    QList<QUrl> urls;
    for (const QString& path : paths)
        urls.append(QUrl::fromLocalFile(path));
    auto* drag = new QDrag(list_.viewport()); // belongs to the toolkit from now on
    auto* files = new QMimeData;
    files->setUrls(urls);
    drag->setMimeData(files);
    if (entry)
        drag->setPixmap(entry->icon().pixmap(QSize(96, 96)));
    list_.setDragging(true);
    Dialogs::instance().drag(*drag, Qt::CopyAction);
    list_.setDragging(false);
}

bool FileDrag::take(QDropEvent& event)
{
    if (!event.mimeData()->hasUrls() || event.source() == list_.viewport() || event.source() == &list_)
        return false;
    if (!(event.possibleActions() & Qt::CopyAction)) {
        event.ignore();
        return true;
    }
    event.setDropAction(Qt::CopyAction);
    event.accept();
    if (event.type() != QEvent::Drop)
        return true;
    QStringList paths;
    for (const QUrl& url : event.mimeData()->urls())
        paths.append(url.isLocalFile() ? url.toLocalFile() : url.toDisplayString());
    Q_EMIT dropped(paths);
    return true;
}
