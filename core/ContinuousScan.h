#pragma once

#include "FrameHandle.h"
#include "Workers.h"

#include <QObject>

#include <atomic>
#include <chrono>
#include <functional>

class MirvakCamera;
class StillCapture;

/// Pictures one after the other: of each new page that comes to rest under the camera, or by the clock. GUI
/// thread only, except checkautopage().
class ContinuousScan : public QObject
{
    Q_OBJECT

public:
    /// Both are borrowed.
    ContinuousScan(MirvakCamera& camera, StillCapture& capture, QObject* parent = nullptr);
    ~ContinuousScan() override;

    /// From now on autopageScanSign() tells of new pages; the page that lies there counts as one.
    void startPages();
    /// Ends the watch for pages. A timed capture that has begun is completed.
    void stop();
    /// Waits for the timed captures that have begun. Close the image channel first, or this takes as long as
    /// they wait for a frame.
    void finish();
    bool watchesPages() const { return watchesPages_; }

    /// Capture thread: looks whether a new page lies in the frame.
    void checkautopage(void* image);

    using TakeFrame = std::function<FrameHandle(std::chrono::seconds timeout)>;
    /// One shot with the settings as they are, of the frame that `take` waits for. False when nothing of it
    /// was saved.
    bool scannerimage(const TakeFrame& take);
    /// The same on a thread of its own, one a tick; the ticks that wait for a frame share the first that
    /// comes.
    void onAutoScanTiemr();

Q_SIGNALS:
    /// A new page lies still. Emitted on the capture thread.
    void autopageScanSign();
    /// A picture lies in this file; with several pages side by side one shot gives several. Emitted on the
    /// thread that took it.
    void pictureSaved(const QString& path);
    /// A frame came but could not be saved, or not all of its pages. Emitted on the thread that took it.
    void saveFailed();

private:
    bool save(void* image);
    void timescanner();

    MirvakCamera& camera_;
    StillCapture& capture_;
    std::atomic<bool> watchesPages_{false};
    std::atomic<bool> forgetsPage_{false};
    std::atomic<int> pendingCapture_{0};
    Workers workers_; // last: they use all of the above
};
