#include "TuningControl.h"

#include "CameraSession.h"
#include "CaptureDesk.h"
#include "FrameDelivery.h"

namespace {

/// Where in the camera's own picture a place lies that is shown turned clockwise.
QPointF unturned(const QPointF& place, int quarterTurns)
{
    switch (quarterTurns) {
    case 1:
        return {place.y(), 1 - place.x()};
    case 2:
        return {1 - place.x(), 1 - place.y()};
    case 3:
        return {1 - place.y(), place.x()};
    default:
        return place;
    }
}

} // namespace

TuningControl::TuningControl(
    MirvakCamera& camera, CameraSession& session, FrameDelivery& delivery, VideoView& view, CaptureDesk& desk)
    : session_(session), delivery_(delivery), desk_(desk), controls_(camera, session), overlay_(view, nullptr)
{
    connectOverlay();
    connect(&controls_, &CameraControls::changed, this, &TuningControl::show);
    connect(&session_, &CameraSession::started, this, &TuningControl::show);
    connect(&session_, &CameraSession::closing, this, [this] { overlay_.showControls({}, false); });
    connect(&controls_, &CameraControls::focused, this, [this](bool found) {
        overlay_.hideFocusMark();
        if (!found)
            desk_.showNotice(tr("There is nothing to focus on at this place."));
    });
}

void TuningControl::connectOverlay()
{
    connect(&overlay_, &ControlOverlay::opened, this, [this](bool isOpen) {
        controls_.watch(isOpen);
        show();
    });
    connect(&overlay_, &ControlOverlay::changed, &controls_, &CameraControls::set);
    connect(&overlay_, &ControlOverlay::resetAll, &controls_, &CameraControls::resetAll);
    connect(&overlay_, &ControlOverlay::focusWanted, this, &TuningControl::focusOn);
}

void TuningControl::show()
{
    overlay_.showControls(controls_.list(), session_.isOpen());
}

void TuningControl::focusOn(const QPointF& place)
{
    const QPointF own = unturned(place, delivery_.rotation());
    controls_.focusAt(own.x(), own.y());
}
