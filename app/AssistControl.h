#pragma once

#include "SecondCamera.h"

#include <QObject>

class CameraSession;
class CaptureDesk;
class MoveVideoWidget;
class VideoView;

/// Shows the second camera's live picture over the preview while its box in the tool bar is ticked. GUI
/// thread only, except onFrame().
class AssistControl : public QObject
{
    Q_OBJECT

public:
    /// `callback` gets the second camera's frames with `context` and passes them to onFrame(). All else is
    /// borrowed for the life of this object.
    AssistControl(MirvakCamera& camera,
                  MirvakFrameCallback callback,
                  void* context,
                  CameraSession& session,
                  VideoView& view,
                  CaptureDesk& desk);
    ~AssistControl() override;

    /// The box was ticked or cleared.
    void onAssistCheacked(bool checked);
    /// The corner chosen in the settings has changed.
    void placeAgain();
    /// The settings have changed whether the second camera's picture goes into the captures.
    void tellWhatIsSaved();
    /// Releases the second camera; for the end of the program.
    void stop() { second_.stop(); }

    /// Switches the second camera off: somebody else wants it, or it cannot be used.
    void giveUp();

    bool isShown() const;
    /// Capture thread.
    void onFrame(void* image) { second_.onFrame(image); }
    ImageChannel& channel() { return second_.channel(); }

private:
    void switchOff();
    void switchOn();
    void makeOverlay();

    CameraSession& session_;
    VideoView& view_;
    CaptureDesk& desk_;
    MoveVideoWidget* overlay_ = nullptr; // changes only while the second camera is closed
    SecondCamera second_;                // last: its frames go to the overlay
};
