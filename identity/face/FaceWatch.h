#pragma once

#include <QImage>
#include <QRectF>

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

class FaceLibrary;

/// Looks for the face in the live picture, a few times a second, on a thread of its own; of the frames that
/// come meanwhile only the newest counts. Thread-safe.
class FaceWatch
{
public:
    /// `library` is borrowed.
    explicit FaceWatch(FaceLibrary& library);
    /// Waits for the look that is under way.
    ~FaceWatch();
    FaceWatch(const FaceWatch&) = delete;
    FaceWatch& operator=(const FaceWatch&) = delete;

    /// 24 bits, red green blue, rows without padding.
    void offer(const QImage& frame);
    /// Where the face of a present frame is, in its pixels; null for none.
    QRectF face() const;

private:
    void run();
    QRectF look(const QImage& frame) const;

    FaceLibrary& library_;
    mutable std::mutex mutex_; ///< of what follows
    std::condition_variable changed_;
    QImage newest_;
    QRectF face_;
    std::chrono::steady_clock::time_point seen_;
    bool isEnding_ = false;
    std::thread thread_; // last: it uses the others
};
