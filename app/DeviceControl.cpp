#include "DeviceControl.h"

#include "CaptureDesk.h"
#include "CaptureProcessor.h"
#include "FrameDelivery.h"
#include "Settings.h"
#include "VideoView.h"

#include <QSignalBlocker>

namespace {

constexpr int searchIntervalMs = 1500;
constexpr int watchIntervalMs = 1000;
constexpr int silentTicksToTell = 3;

} // namespace

DeviceControl::DeviceControl(
    CameraSession& session, FrameDelivery& delivery, VideoView& view, CaptureDesk& desk, QObject* parent)
    : QObject(parent), session_(session), delivery_(delivery), view_(view), desk_(desk)
{
    search_.setInterval(searchIntervalMs);
    watch_.setInterval(watchIntervalMs);
    connect(&search_, &QTimer::timeout, this, &DeviceControl::lookForCameras);
    connect(&watch_, &QTimer::timeout, this, &DeviceControl::watchStream);
    connect(&session_, &CameraSession::deviceLost, this, &DeviceControl::handleLoss);
}

void DeviceControl::discover()
{
    if (session_.discover() < 1) {
        view_.SetShowInfo(tr("No found device!"));
        search_.start();
        return;
    }
    showDevices(session_.defaultDevice());
    if (session_.defaultDevice() >= 0)
        changeDevice(session_.defaultDevice());
}

void DeviceControl::showDevices(int current)
{
    search_.stop();
    view_.SetAssistEnable(session_.hasSecondCamera());
    view_.SetDeviceNames(session_.deviceNames());
    view_.SetDeviceDefaultIdx(current);
}

void DeviceControl::changeDevice(int index)
{
    watch_.stop();
    const CameraSession::OpenResult result = session_.select(index);
    if (result != CameraSession::OpenResult::Ok) {
        view_.ClearFrame();
        view_.SetShowInfo(tr("Device create failed!"));
        desk_.tell(tr("Waring"), tr("Device create failed!"));
        return;
    }
    view_.SetAssistEnable(session_.isMainCamera(index));
    fillResolutions();
    start(view_.GetResolutionCurrentIndex());
}

void DeviceControl::fillResolutions()
{
    const QSignalBlocker quiet(&view_);
    const QStringList resolutions = session_.resolutions();
    view_.SetResolutions(resolutions);
    const int stored = settings::cameraResolution.read();
    if (stored >= 0 && stored < resolutions.size())
        view_.SetDefaultResolution(stored);
}

void DeviceControl::changeResolution(int index)
{
    watch_.stop();
    session_.closeCamera();
    if (!start(index))
        return;
    ConfigSettings store;
    settings::cameraResolution.write(store, index);
}

bool DeviceControl::start(int resolutionIndex)
{
    delivery_.channel().resume();
    const CameraSession::OpenResult result =
        session_.start(resolutionIndex, view_.GetResolutionCurrentText(resolutionIndex));
    if (result == CameraSession::OpenResult::Ok) {
        restoreCroppingMode();
        lostUsbId_ = session_.currentUsbId();
        silentTicks_ = 0;
        watch_.start();
        return true;
    }
    const bool created = result == CameraSession::OpenResult::StartFailed;
    const QString text = created ? tr("video create failed!") : tr("Device create failed!");
    view_.ClearFrame();
    view_.SetShowInfo(text);
    desk_.tell(created ? tr("Error") : tr("Waring"), text);
    return false;
}

void DeviceControl::restoreCroppingMode()
{
    // A rectangle that is being drawn outlives a change of the resolution: the tool bar still shows its
    // choice.
    if (!view_.isSelectionMode())
        delivery_.setCroppingMode(settings::deskew.read());
}

void DeviceControl::handleLoss()
{
    watch_.stop();
    view_.ClearFrame();
    view_.SetShowInfo(tr("The camera was disconnected."));
    search_.start();
}

void DeviceControl::lookForCameras()
{
    if (session_.isOpen()) {
        search_.stop();
        return;
    }
    // A lost camera is waited for; without one, the first document camera is taken.
    const bool lost = session_.state() == CameraSession::Lost;
    if (session_.discover() < 1)
        return;
    const int index = lost ? session_.indexOf(lostUsbId_) : session_.defaultDevice();
    if (index < 0)
        return;
    showDevices(index);
    changeDevice(index);
}

void DeviceControl::watchStream()
{
    const unsigned frames = delivery_.frameCount();
    silentTicks_ = frames == framesSeen_ ? silentTicks_ + 1 : 0;
    framesSeen_ = frames;
    if (silentTicks_ == silentTicksToTell)
        view_.ShowNotice(tr("The camera delivers no picture."));
}
