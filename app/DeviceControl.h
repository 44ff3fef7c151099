#pragma once

#include "CameraChoice.h"
#include "CameraSession.h"

#include <QObject>
#include <QTimer>

class CaptureDesk;
class FrameDelivery;
class VideoView;

/// Connects the choosers of the live view with the camera session: lists, choices, messages, and cameras that
/// come and go. GUI thread only.
class DeviceControl : public QObject
{
    Q_OBJECT

public:
    /// All are borrowed for the life of this object.
    DeviceControl(
        CameraSession& session, FrameDelivery& delivery, VideoView& view, CaptureDesk& desk, QObject* parent);

    /// Looks for cameras, fills the choosers and starts the default camera.
    void discover();
    /// Opens the camera in this row of the chooser at the stored resolution.
    void changeDevice(int row);
    /// Restarts the open camera at another resolution, which is stored.
    void changeResolution(int index);
    /// Takes a choice back that may not be made now: the choosers show again what runs.
    void showRunning();
    /// From now on nothing is opened by itself; for the end of the program.
    void stop();

private:
    void showDevices();
    void fillResolutions();
    void followList();
    void openAny();
    CameraSession::OpenResult open(const QString& identity);
    CameraSession::OpenResult start(int resolutionIndex);
    void handleFailure(CameraSession::OpenResult result);
    void tellFailure(CameraSession::OpenResult result);
    QString whatIsMissing() const;
    void restoreCroppingMode();
    void handleLoss();
    void waitForCamera(const QString& text);
    void watchStream();

    CameraSession& session_;
    FrameDelivery& delivery_;
    VideoView& view_;
    CaptureDesk& desk_;
    CameraChoice choice_;
    Cameras shown_;       // the rows of the chooser
    int resolution_ = -1; // that runs
    QTimer retry_;        // runs while a camera is there that does not open
    int tries_ = 0;
    QTimer watch_; // runs while a camera streams
    unsigned framesSeen_ = 0;
    int silentTicks_ = 0;
};
