#pragma once

#include "CaptureProcessor.h"
#include "FaceCameras.h"
#include "FrameWait.h"

/// Pictures of the face in files that their owner alone may read. GUI thread only.
class FaceCapture
{
public:
    /// Both are borrowed. `front`: what the user has before him while a frame is waited for.
    FaceCapture(MirvakCamera& camera, FaceCameras& cameras, FrameWait::Front front);

    /// The next frame for this role; null when none came in time or the user gave it up.
    FrameHandle GetImageSync(FaceRole role, std::chrono::seconds timeout);
    /// Takes a frame for this role and saves it with 640 x 480 pixels, named as captures are. @return its
    /// path; empty when no camera serves the role, no frame came within ten seconds or it could not be saved
    QString capture(FaceRole role);

    CaptureProcessor& files() { return files_; }

private:
    MirvakCamera& camera_;
    FaceCameras& cameras_;
    CaptureProcessor files_;
    FrameWait wait_;
};
