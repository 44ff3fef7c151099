#pragma once

#include "FrameHandle.h"

#include <QPixmap>
#include <QStringList>

#include <chrono>
#include <memory>

class Job;

/// What a feature may ask of the main window. GUI thread only.
class CaptureDesk
{
public:
    virtual ~CaptureDesk() = default;

    /// The guard of every capture command: false while a dialog that changes captures is open, while the
    /// session blocks captures or while no camera is open. While a card composition waits for its second shot
    /// it says so to the user and answers false.
    virtual bool mayCapture() = 0;
    /// The same, but a composition that waits for its second shot is no obstacle: for the one that completes
    /// it.
    virtual bool mayCompose() = 0;
    /// The next frame of the main camera, turned as the view is; null when none came in time.
    virtual FrameHandle takeFrame(std::chrono::seconds timeout) = 0;
    /// Saves what the present cropping mode makes of it: one file, or one for each page that lies there, in
    /// reading order. What could not be saved is missing (the user has been told).
    virtual QStringList savePages(void* image, int colourMode) = 0;
    /// One file of it, uncut where the mode would make several; the path, or empty (the user has been told).
    virtual QString saveFrame(void* image, int colourMode) = 0;
    /// The same, cut as `cropMode` (one of cropping::) says.
    virtual QString saveCropped(void* image, int cropMode, int colourMode) = 0;
    /// Where the next file may go; empty when the folder cannot be made.
    virtual QString freeImagePath() const = 0;
    /// One of cropping::, as the preview's tools say.
    virtual int croppingMode() const = 0;
    /// Whether the second camera's picture lies over the preview.
    virtual bool showsSecondCamera() const = 0;
    /// The next frame of the second camera; null when none came in time.
    virtual FrameHandle takeSecondFrame(std::chrono::seconds timeout) = 0;
    /// Lists the file in the strip; an empty path is ignored.
    virtual void addThumbnail(const QString& path) = 0;
    /// Lists a file that is no picture, under a picture that stands for its kind.
    virtual void addDocument(const QString& path, const QPixmap& icon) = 0;
    /// Tells the user and waits until it has been read.
    virtual void tell(const QString& title, const QString& text) = 0;
    /// A note that needs no answer; an empty one takes the last one away.
    virtual void showNotice(const QString& text) = 0;
    /// Shows what is being done while anybody else holds `job`, with a way to cancel it.
    virtual void showJob(const QString& text, const std::shared_ptr<Job>& job) = 0;
    /// While a composition waits for its second shot, every other capture is refused.
    virtual void setMergePending(bool pending) = 0;
    /// The tools over the preview.
    virtual void enableTools(bool enable) = 0;
};
