#pragma once

#include "ControlLink.h"

#include <QMap>
#include <QObject>
#include <QTimer>

class CameraSession;

/// What can be set at the open camera: how it stands, changes of the user, and their memory, by which the
/// session sets them again when the camera is opened next. GUI thread only; the camera is asked on another
/// one.
class CameraControls : public QObject
{
    Q_OBJECT

public:
    /// Both are borrowed.
    CameraControls(MirvakCamera& camera, CameraSession& session, QObject* parent = nullptr);

    /// As last heard; empty without a camera and before it was watched for the first time.
    const ControlList& list() const { return controls_; }
    /// While watched, what the camera changes by itself is followed.
    void watch(bool isOn);
    bool isFocusing() const { return isFocusing_; }

    /// At once, and kept for this camera.
    void set(int control, int value);
    /// Everything as delivered; nothing is kept.
    void resetAll();
    /// On this place of the camera's own picture, from 0 to 1 each way. What it finds is kept.
    void focusAt(double x, double y);

Q_SIGNALS:
    void changed();
    /// The search for the focus has ended; `found` is false when there was nothing to focus on.
    void focused(bool found);

private:
    void follow();
    void leave();
    void pace();
    void note(const ControlReport& report);
    void noteFocus(int state);
    void keep(int control);

    CameraSession& session_;
    QString identity_; // of the camera that is open
    ControlList controls_;
    QMap<int, unsigned> unheard_; // by control: the request that sets it
    unsigned connection_ = 0;
    unsigned focusRequest_ = 0;
    bool isWatched_ = false;
    bool isFocusing_ = false;
    QTimer glance_;
    ControlLink link_; // last: its thread calls this object
};
