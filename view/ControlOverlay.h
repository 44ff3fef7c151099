#pragma once

#include "ControlLink.h"

#include <QObject>

class ControlPanel;
class FocusMark;
class IconButton;
class PictureClicks;
class VideoView;

/// Puts the camera's controls over the preview: a small button at its right edge, and the panel that it
/// opens, which is made then. The preview keeps its place. GUI thread only.
class ControlOverlay : public QObject
{
    Q_OBJECT

public:
    /// `view` is borrowed; the widgets belong to it.
    ControlOverlay(VideoView& view, QObject* parent);

    bool isOpen() const;
    void showControls(const ControlList& controls, bool isCameraOpen);
    /// The mark of the place that was last clicked goes.
    void hideFocusMark();

    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    void opened(bool isOpen);
    void changed(int control, int value);
    void resetAll();
    /// A click on the picture while the panel is open; from 0 to 1 each way, in the picture as shown.
    void focusWanted(const QPointF& place);

private:
    void makeButton();
    void makePanel();
    void toggle();
    void place();

    VideoView& view_;
    IconButton* button_;
    ControlPanel* panel_ = nullptr;
    FocusMark* mark_ = nullptr;
    PictureClicks* clicks_;
};
