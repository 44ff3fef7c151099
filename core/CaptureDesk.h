#pragma once

#include "FrameHandle.h"

#include <QString>

#include <chrono>

/// What a feature may ask of the main window. GUI thread only.
class CaptureDesk
{
public:
    virtual ~CaptureDesk() = default;

    /// The guard of every capture command: false while a dialog that changes captures is open, while the
    /// session blocks captures or while no camera is open. While a card composition waits for its second shot
    /// it says so to the user and answers false.
    virtual bool mayCapture() = 0;
    /// The next frame of the main camera, turned as the view is; null when none came in time.
    virtual FrameHandle takeFrame(std::chrono::seconds timeout) = 0;
    /// Saves a processed copy with the present cropping mode; the path, or empty (the user has been told).
    virtual QString saveFrame(void* image, int colourMode) = 0;
    /// Lists the file in the strip; an empty path is ignored.
    virtual void addThumbnail(const QString& path) = 0;
    /// A note that needs no answer.
    virtual void showNotice(const QString& text) = 0;
};
