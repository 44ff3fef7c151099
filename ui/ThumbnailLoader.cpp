#include "ThumbnailLoader.h"

#include <QImageReader>

#include <algorithm>

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
    worker_.finish();
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
        if (find(path) == waiting_.end())
            waiting_.push_back({path, room});
    }
    changed_.notify_one();
    isWorking_ = isWorking_ || worker_.start([this] { work(); });
}

void ThumbnailLoader::drop(const QString& path)
{
    const std::lock_guard lock(mutex_);
    const auto job = find(path);
    if (job != waiting_.end())
        waiting_.erase(job);
}

std::deque<ThumbnailLoader::Job>::iterator ThumbnailLoader::find(const QString& path)
{
    return std::find_if(waiting_.begin(), waiting_.end(), [&](const Job& job) { return job.path == path; });
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
