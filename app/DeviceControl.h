#pragma once

#include "CameraSession.h"

#include <QObject>
#include <QTimer>

class CaptureDesk;
class FrameDelivery;
class VideoView;

/// Connects the choosers of the live view with the camera session: lists, choices, messages, and the return
/// of a camera that was unplugged. GUI thread only.
class DeviceControl : public QObject
{
    Q_OBJECT

public:
    /// All are borrowed for the life of this object.
    DeviceControl(
        CameraSession& session, FrameDelivery& delivery, VideoView& view, CaptureDesk& desk, QObject* parent);

    /// Looks for cameras, fills the choosers and starts the default camera.
    void discover();
    /// Opens another camera at the stored resolution.
    void changeDevice(int index);
    /// Restarts the open camera at another resolution, which is stored.
    void changeResolution(int index);

private:
    void showDevices(int current);
    void fillResolutions();
    bool start(int resolutionIndex);
    void restoreCroppingMode();
    void handleLoss();
    void lookForCameras();
    void watchStream();

    CameraSession& session_;
    FrameDelivery& delivery_;
    VideoView& view_;
    CaptureDesk& desk_;
    QTimer search_; // runs while no camera is open
    QTimer watch_;  // runs while a camera streams
    QString lostUsbId_;
    unsigned framesSeen_ = 0;
    int silentTicks_ = 0;
};
