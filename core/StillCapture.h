#pragma once

#include "CaptureProcessor.h"
#include "FrameHandle.h"

#include <chrono>
#include <functional>

class CameraSession;
class FrameDelivery;

/// One picture of the main camera, from the stream to a file. Thread-safe, so that a timed capture needs no
/// help of the GUI thread. All that it is given is borrowed.
class StillCapture
{
public:
    /// The rectangle drawn in the preview, in pixels of the frame. Called on any thread.
    using Selection = std::function<QRect()>;

    StillCapture(const CameraSession& session,
                 FrameDelivery& delivery,
                 CaptureProcessor& processor,
                 Selection selection);

    /// Whether a camera delivers frames.
    bool isStreaming() const;
    /// The next frame, turned as the view is; null when none came in time or the stream ended.
    FrameHandle take(std::chrono::milliseconds timeout);
    /// Saves what the present cropping mode makes of it: one file, or one for each page that lies there.
    SavedPages savePages(void* image, int colourMode);
    /// Saves a processed copy; the path, or empty. One file, cut as `cropMode` (one of cropping::) says.
    QString save(void* image, int cropMode, int colourMode);

private:
    const CameraSession& session_;
    FrameDelivery& delivery_;
    CaptureProcessor& processor_;
    Selection selection_;
};
