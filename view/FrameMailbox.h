#pragma once

#include <QImage>

#include <mutex>

/// Where the frame thread leaves the newest frame for the GUI thread. Holds one frame: a slow reader loses
/// old frames and never has a queue of them. Thread-safe.
class FrameMailbox
{
public:
    /// Replaces the waiting frame, which is released here, on the calling thread.
    /// @return true when the reader has to be woken: once until it comes and takes.
    bool put(const QImage& frame);
    /// @return the newest frame, null when there is none. The next put() asks for a wake-up again.
    QImage take();

private:
    std::mutex mutex_;
    QImage waiting_;     // guarded by mutex_
    bool woken_ = false; // guarded by mutex_
};
