#include "ThumbnailLoader.h"

#include <QImageReader>

namespace {

bool isTurned(const QImageReader& reader)
{
    return reader.transformation() & QImageIOHandler::TransformationRotate90;
}

QImage makePicture(const QString& path, const QSize& room)
{
    QImageReader reader(path);
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(true);
    // Twice the size that is needed: the last step to it is the smooth one.
    const QSize enough = (isTurned(reader) ? room.transposed() : room) * 2;
    const QSize size = reader.size();
    if (size.width() > enough.width() || size.height() > enough.height())
        reader.setScaledSize(size.scaled(enough, Qt::KeepAspectRatio).expandedTo(QSize(1, 1)));
    QImage picture = reader.read();
    if (picture.isNull())
        return picture;
    const QSize fitted = picture.size().scaled(room, Qt::KeepAspectRatio).expandedTo(QSize(1, 1));
    return picture.scaled(fitted, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

} // namespace

ThumbnailLoader::~ThumbnailLoader()
{
    {
        const std::lock_guard lock(mutex_);
        isEnding_ = true;
    }
    changed_.notify_one();
    if (worker_.joinable())
        worker_.join();
}

QSize ThumbnailLoader::sizeOf(const QString& path)
{
    QImageReader reader(path);
    reader.setDecideFormatFromContent(true);
    const QSize size = reader.size();
    return isTurned(reader) ? size.transposed() : size;
}

void ThumbnailLoader::load(const QString& path, const QSize& room)
{
    {
        const std::lock_guard lock(mutex_);
        waiting_.push_back({path, room});
    }
    changed_.notify_one();
    if (!worker_.joinable())
        worker_ = std::thread([this] { work(); });
}

void ThumbnailLoader::dropWaiting()
{
    const std::lock_guard lock(mutex_);
    waiting_.clear();
}

void ThumbnailLoader::work()
{
    std::unique_lock lock(mutex_);
    for (;;) {
        changed_.wait(lock, [this] { return isEnding_ || !waiting_.empty(); });
        if (isEnding_)
            return;
        const Job job = waiting_.front();
        waiting_.pop_front();
        lock.unlock();
        const QImage picture = makePicture(job.path, job.room);
        QMetaObject::invokeMethod(
            this, [this, job, picture] { Q_EMIT loaded(job.path, picture); }, Qt::QueuedConnection);
        lock.lock();
    }
}
