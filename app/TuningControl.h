#pragma once

#include "CameraControls.h"
#include "ControlOverlay.h"

class CaptureDesk;
class FrameDelivery;
class VideoView;

/// Connects the controls of the open camera with the panel over the preview. GUI thread only.
class TuningControl : public QObject
{
    Q_OBJECT

public:
    /// All are borrowed for the life of this object.
    TuningControl(MirvakCamera& camera,
                  CameraSession& session,
                  FrameDelivery& delivery,
                  VideoView& view,
                  CaptureDesk& desk);

private:
    void connectOverlay();
    void show();
    void focusOn(const QPointF& place);

    CameraSession& session_;
    FrameDelivery& delivery_;
    CaptureDesk& desk_;
    CameraControls controls_;
    ControlOverlay overlay_;
};
