#pragma once

#include "CaptureDesk.h"
#include "ConfigSettings.h"
#include "FrameWait.h"

#include <QObject>
#include <QVector>

#include <atomic>

class AssistControl;
class CameraSession;
class CaptureProcessor;
class FrameDelivery;
class JobStack;
class QWidget;
class StillCapture;
class VideoView;

/// What the features ask of the main window: leave to capture, frames, files, messages. GUI thread only.
class MainDesk : public QObject, public CaptureDesk
{
    Q_OBJECT

public:
    /// All are borrowed for the life of this object. `window` is what messages stand over.
    struct Parts
    {
        QWidget& window;
        VideoView& view;
        const CameraSession& session;
        FrameDelivery& delivery;
        CaptureProcessor& processor;
        StillCapture& capture;
    };
    explicit MainDesk(const Parts& parts);

    /// While this window shows, nothing is captured and no device is changed.
    void addBlocker(const QWidget* dialog) { blockers_ << dialog; }
    bool isDialogOpen() const;
    /// Such a window shows, or a frame is waited for.
    bool isBusy() const { return isDialogOpen() || wait_.isWaiting(); }
    /// While this window shows, it has the live picture in the view's place.
    void addFront(QWidget* window) { fronts_ << window; }
    /// Where the second camera's picture comes from; without it there is none.
    void setAssist(AssistControl* assist) { assist_ = assist; }
    /// How often the window has waited for a frame or saved one. Thread-safe.
    unsigned captures() const { return captures_; }
    /// The guard of what needs no camera: mayCapture() without asking for one that is open.
    bool mayStart();
    /// The camera delivered a picture that could not be saved.
    void tellNotSaved();

    bool mayCapture() override;
    bool mayCompose() override;
    FrameHandle takeFrame(std::chrono::seconds timeout) override;
    QStringList savePages(void* image, int colourMode) override;
    QString saveFrame(void* image, int colourMode) override;
    QString saveCropped(void* image, int cropMode, int colourMode) override;
    QString freeImagePath() const override;
    int croppingMode() const override;
    bool showsSecondCamera() const override;
    FrameHandle takeSecondFrame(std::chrono::seconds timeout) override;
    void addThumbnail(const QString& path) override;
    void addDocument(const QString& path, const QPixmap& icon) override { Q_EMIT documentMade(path, icon); }
    void tell(const QString& title, const QString& text) override;
    void showNotice(const QString& text) override;
    void showJob(const QString& text, const std::shared_ptr<Job>& job) override;
    void setMergePending(bool pending) override { mergePending_ = pending; }
    void enableTools(bool enable) override { Q_EMIT toolsEnabled(enable); }

Q_SIGNALS:
    void captured(const QString& path);
    void documentMade(const QString& path, const QPixmap& icon);
    void toolsEnabled(bool enable);

private:
    QWidget& front() const;
    bool isMergeDone() const;

    Parts parts_;
    FrameWait wait_{[this]() -> QWidget& { return front(); }};
    QVector<const QWidget*> blockers_;
    QVector<QWidget*> fronts_;
    JobStack* jobs_;
    AssistControl* assist_ = nullptr;
    ConfigSettings settings_;
    bool mergePending_ = false;
    std::atomic<unsigned> captures_{0};
};
