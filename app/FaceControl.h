#pragma once

#include "FaceVerify.h"

#include <QObject>
#include <QPointer>

class AssistControl;
class CameraSession;
class MainDesk;
class MirvakCamera;

/// The window that compares faces: made when it is asked for, gone when it is closed. GUI thread only.
class FaceControl : public QObject
{
    Q_OBJECT

public:
    /// All are borrowed. `assist` gives the second camera back, which may be one of those that the window
    /// needs.
    struct Parts
    {
        MirvakCamera& camera;
        const CameraSession& session;
        AssistControl& assist;
        const MainDesk& desk;
    };
    explicit FaceControl(const Parts& parts) : parts_(parts) {}
    ~FaceControl() override { finish(); }

    void onFaceVerify();
    /// Closes the window at once; for the end of the program.
    void finish();

private:
    void drop();

    Parts parts_;
    FaceVerify* window_ = nullptr;
    QPointer<FaceVerify> closed_; ///< one that goes with the next turn of the event loop
};
