#pragma once

#include "FrameHandle.h"

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>

/// Hands single frames from a capture thread to whoever wants to save one. Thread-safe.
///
/// A consumer asks and waits; the next frame offered after the request is cloned and handed over. Nothing is
/// cloned while nobody asks, and at most one frame waits at a time, so a consumer that gave up costs one
/// frame of memory and no more.
class ImageChannel
{
public:
    explicit ImageChannel(MirvakCamera& camera) : camera_(camera), leftOver_(ownImage(camera, nullptr)) {}

    /// Called with every frame on the capture thread; keeps no reference to `image`.
    void offer(void* image);

    /// The first frame offered after this call, or null when none came in time or the channel was closed. A
    /// time-out is named on standard error. Consumers may wait at the same time; each gets a frame of its
    /// own. `meanwhile` is called about fifty times a second while none has come, on the consumer's thread
    /// and without the lock; its false gives the request up, also one that has just been answered.
    FrameHandle take(std::chrono::milliseconds timeout, const std::function<bool()>& meanwhile = {});

    /// The stream has ended: those who wait, and those who come before it runs again, are sent away without a
    /// frame. It runs again with the next frame offered, or from resume().
    void interrupt();
    void resume();

    /// Wakes every waiting consumer; from now on take() answers null at once. Final.
    void close();

    /// True from a request until a frame was handed over, also after a time-out.
    bool isRequested() const;

private:
    using Lock = std::unique_lock<std::mutex>;
    using Time = std::chrono::steady_clock::time_point;
    bool isSettled(const FrameHandle& frame) const { return frame || closed_ || ended_; }
    bool await(Lock& lock, const FrameHandle& frame, Time deadline, const std::function<bool()>& meanwhile);

    MirvakCamera& camera_;
    mutable std::mutex mutex_;
    std::condition_variable arrived_;
    std::deque<FrameHandle*> unanswered_; ///< of those who wait, the first comer first
    FrameHandle leftOver_;                ///< the newest one since a request timed out
    int waiting_ = 0;
    bool ended_ = false;
    bool requested_ = false;
    bool closed_ = false;
};
