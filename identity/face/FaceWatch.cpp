#include "FaceWatch.h"

#include "FaceLibrary.h"

#include <cstdio>
#include <exception>
#include <utility>

namespace {

using Clock = std::chrono::steady_clock;
constexpr std::chrono::milliseconds betweenLooks(200);
constexpr std::chrono::milliseconds staysTrue(1000);

} // namespace

FaceWatch::FaceWatch(FaceLibrary& library) : library_(library), thread_([this] { run(); }) {}

FaceWatch::~FaceWatch()
{
    {
        const std::lock_guard lock(mutex_);
        isEnding_ = true;
        changed_.notify_all();
    }
    thread_.join();
    library_.rest();
}

void FaceWatch::offer(const QImage& frame)
{
    QImage old = frame; // given back outside the lock
    const std::lock_guard lock(mutex_);
    newest_.swap(old);
    changed_.notify_all();
}

QRectF FaceWatch::face() const
{
    const std::lock_guard lock(mutex_);
    return Clock::now() - seen_ < staysTrue ? face_ : QRectF();
}

void FaceWatch::run()
{
    std::unique_lock lock(mutex_);
    for (;;) {
        changed_.wait(lock, [this] { return isEnding_ || !newest_.isNull(); });
        if (isEnding_)
            return;
        QImage frame = std::exchange(newest_, QImage());
        const Clock::time_point next = Clock::now() + betweenLooks;
        lock.unlock();
        const QRectF face = look(frame);
        frame = QImage();
        lock.lock();
        face_ = face;
        seen_ = Clock::now();
        changed_.wait_until(lock, next, [this] { return isEnding_; });
    }
}

QRectF FaceWatch::look(const QImage& frame) const
{
    try {
        const FaceLibrary::Place place = library_.look(frame.constBits(), frame.width(), frame.height());
        return place.isFound ? QRectF(place.left, place.top, place.width, place.height) : QRectF();
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "face: %s\n", failure.what());
        return {};
    }
}
