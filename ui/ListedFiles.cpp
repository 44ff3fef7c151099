#include "ListedFiles.h"

#include "ThumbnailLoader.h"

#include <QFileInfo>

namespace {

constexpr int retryMs = 500;

} // namespace

ListedFiles::ListedFiles(std::function<QSize()> room, QObject* parent)
    : QObject(parent), room_(std::move(room)), loader_(new ThumbnailLoader(this))
{
    retryTimer_.setInterval(retryMs);
    connect(&retryTimer_, &QTimer::timeout, this, &ListedFiles::retry);
    connect(&watcher_, &QFileSystemWatcher::fileChanged, this, &ListedFiles::check);
    connect(loader_, &ThumbnailLoader::loaded, this, &ListedFiles::onLoaded);
}

ListedFiles::Stamp ListedFiles::stampOf(const QString& path)
{
    const QFileInfo file(path);
    return {file.size(), file.lastModified()};
}

void ListedFiles::follow(const QString& path)
{
    watcher_.addPath(path);
    files_[path].read = stampOf(path);
}

void ListedFiles::followPicture(const QString& path)
{
    follow(path);
    files_[path].isPicture = files_[path].maybeNone = true;
    read(path);
}

void ListedFiles::forget(const QString& path)
{
    if (files_.remove(path) == 0)
        return;
    watcher_.removePath(path);
    loader_->drop(path);
}

void ListedFiles::check(const QString& path)
{
    const auto file = files_.find(path);
    if (file == files_.end())
        return;
    if (!QFileInfo::exists(path)) {
        forget(path);
        Q_EMIT gone(path);
        return;
    }
    watcher_.addPath(path); // a file that was replaced has dropped out of the watch
    file->isPicture = file->isPicture || !ThumbnailLoader::sizeOf(path).isEmpty();
    if (file->isPicture)
        read(path);
}

void ListedFiles::read(const QString& path)
{
    File& file = files_[path];
    const Stamp now = stampOf(path);
    file.maybeNone = file.maybeNone && file.read == now;
    file.read = now;
    loader_->load(path, room_());
}

void ListedFiles::onLoaded(const QString& path, const QImage& picture)
{
    const auto file = files_.find(path);
    if (file == files_.end())
        return;
    file->isUnread = picture.isNull();
    if (!picture.isNull()) {
        file->maybeNone = false;
        Q_EMIT pictureRead(path, picture);
    } else if (!QFileInfo::exists(path)) {
        check(path);
    } else if (file->maybeNone && file->read == stampOf(path)) {
        forget(path);
        Q_EMIT refused(path);
    } else {
        retryTimer_.start();
    }
}

void ListedFiles::retry()
{
    QStringList unread;
    for (auto file = files_.cbegin(); file != files_.cend(); ++file) {
        if (file->isUnread)
            unread.append(file.key());
    }
    if (unread.isEmpty())
        retryTimer_.stop();
    for (const QString& path : unread) {
        if (!(files_.value(path).read == stampOf(path)))
            check(path);
    }
}
