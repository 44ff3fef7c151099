#pragma once

#include "FrameHandle.h"

#include <QObject>

class CaptureDesk;
class ImageChannel;
class MirvakCamera;
class VideoView;

/// The page that the frozen view shows, kept so that it can be saved like any capture. GUI thread only.
class FrozenPage : public QObject
{
    Q_OBJECT

public:
    /// `channel` is that of the camera in the view. All are borrowed for the life of this object.
    FrozenPage(VideoView& view, ImageChannel& channel, MirvakCamera& camera, CaptureDesk& desk);

private:
    void onFrozen(bool frozen);
    void save();

    VideoView& view_;
    ImageChannel& channel_;
    MirvakCamera& camera_;
    CaptureDesk& desk_;
    FrameHandle page_; // null while the view is live, or when the camera gave none
};
