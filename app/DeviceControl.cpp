#include "DeviceControl.h"

#include "CaptureDesk.h"
#include "CaptureProcessor.h"
#include "FrameDelivery.h"
#include "Settings.h"
#include "VideoView.h"

#include <QSignalBlocker>

#include <algorithm>

namespace {

using OpenResult = CameraSession::OpenResult;

constexpr int firstPauseMs = 500; // then twice as long each time
constexpr int longestPauseMs = 5000;
constexpr int watchIntervalMs = 1000;
constexpr int silentTicksToTell = 3;

CameraChoice::Time now()
{
    return std::chrono::steady_clock::now();
}

} // namespace

DeviceControl::DeviceControl(
    CameraSession& session, FrameDelivery& delivery, VideoView& view, CaptureDesk& desk, QObject* parent)
    : QObject(parent), session_(session), delivery_(delivery), view_(view), desk_(desk)
{
    retry_.setSingleShot(true);
    watch_.setInterval(watchIntervalMs);
    connect(&retry_, &QTimer::timeout, this, &DeviceControl::openAny);
    connect(&watch_, &QTimer::timeout, this, &DeviceControl::watchStream);
    connect(&session_, &CameraSession::camerasChanged, this, &DeviceControl::followList);
    connect(&session_, &CameraSession::deviceLost, this, &DeviceControl::handleLoss);
}

void DeviceControl::stop()
{
    retry_.stop();
    watch_.stop();
    disconnect(&session_, nullptr, this, nullptr);
}

void DeviceControl::discover()
{
    session_.discover();
    followList();
}

void DeviceControl::followList()
{
    choice_.listed(session_.cameras(), now());
    showDevices();
    if (!session_.isOpen()) {
        tries_ = 0; // what has come or become accessible is worth an immediate try
        openAny();
    } else if (const QString better = choice_.better(now()); !better.isEmpty()) {
        if (open(better) != OpenResult::Ok)
            openAny();
    }
}

void DeviceControl::showDevices()
{
    const Cameras& cameras = session_.cameras();
    if (shown_ != cameras) {
        shown_ = cameras;
        QStringList names;
        for (const Camera& camera : shown_)
            names << camera.name;
        view_.SetDeviceNames(names);
    }
    view_.SetDeviceDefaultIdx(rowOf(shown_, session_.current().identity));
    view_.SetAssistEnable(session_.isOpen() ? session_.current().isMain() : session_.hasSecondCamera());
}

void DeviceControl::showRunning()
{
    showDevices();
    view_.SetDefaultResolution(resolution_);
}

void DeviceControl::openAny()
{
    QString missing;
    for (const QString& identity : choice_.candidates()) {
        if (open(identity) == OpenResult::Ok)
            return;
        if (missing.isEmpty())
            missing = whatIsMissing();
    }
    if (!missing.isEmpty())
        waitForCamera(missing);
    else if (session_.state() == CameraSession::Lost)
        view_.SetShowInfo(tr("The camera was disconnected."));
    else if (session_.cameras().isEmpty())
        view_.SetShowInfo(tr("No found device!"));
    else
        view_.SetShowInfo(tr("No document camera is connected. Another one can be chosen above."));
}

OpenResult DeviceControl::open(const QString& identity)
{
    retry_.stop();
    OpenResult result = session_.select(identity);
    if (result == OpenResult::Ok) {
        fillResolutions();
        result = start(view_.GetResolutionCurrentIndex());
    }
    handleFailure(result);
    showDevices();
    return result;
}

void DeviceControl::changeDevice(int row)
{
    const QString identity = row >= 0 && row < shown_.size() ? shown_[row].identity : QString();
    choice_.chosen(identity, now());
    tellFailure(open(identity));
}

void DeviceControl::changeResolution(int index)
{
    choice_.chosen(session_.current().identity, now());
    session_.closeCamera();
    const OpenResult result = start(index);
    handleFailure(result);
    tellFailure(result);
    if (result != OpenResult::Ok)
        return;
    ConfigSettings store;
    settings::cameraResolution.write(store, index);
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

OpenResult DeviceControl::start(int resolutionIndex)
{
    delivery_.channel().resume();
    const OpenResult result =
        session_.start(resolutionIndex, view_.GetResolutionCurrentText(resolutionIndex));
    if (result != OpenResult::Ok)
        return result;
    choice_.opened(session_.current().identity);
    resolution_ = resolutionIndex;
    restoreCroppingMode();
    tries_ = 0;
    silentTicks_ = 0;
    watch_.start();
    return result;
}

void DeviceControl::handleFailure(OpenResult result)
{
    if (result == OpenResult::Ok)
        return;
    watch_.stop();
    delivery_.channel().interrupt(); // no frame will come
    view_.ClearFrame();
}

/// What the user has just chosen himself: he waits for an answer.
void DeviceControl::tellFailure(OpenResult result)
{
    if (result == OpenResult::Ok)
        return;
    tries_ = 0;
    waitForCamera(whatIsMissing());
    if (result == OpenResult::StartFailed)
        desk_.tell(tr("Error"), tr("video create failed!"));
    else
        desk_.tell(tr("Waring"), tr("Device create failed!"));
}

void DeviceControl::waitForCamera(const QString& text)
{
    view_.SetShowInfo(text);
    retry_.start(std::min(firstPauseMs << std::min(tries_++, 10), longestPauseMs));
}

QString DeviceControl::whatIsMissing() const
{
    const QString name = session_.current().name;
    switch (session_.failure()) {
    case MIRVAK_NO_ACCESS:
        return tr("Waiting for permission to use %1...").arg(name);
    case MIRVAK_BUSY:
        return tr("%1 is in use by another program. Waiting until it is free...").arg(name);
    default:
        return tr("%1 does not start. Trying again...").arg(name);
    }
}

void DeviceControl::restoreCroppingMode()
{
    // A rectangle that is being drawn outlives a change of the resolution: the tool bar still shows its
    // choice.
    if (view_.isSelectionMode())
        return;
    const int mode = settings::deskew.read();
    delivery_.setCroppingMode(mode);
    view_.ShowDeskew(mode); // without a camera automatic cropping can be clicked, but is not chosen
}

void DeviceControl::handleLoss()
{
    watch_.stop();
    choice_.lost(session_.current().identity, now());
    view_.ClearFrame();
    view_.SetResolutions({});
    tries_ = 0;
    waitForCamera(tr("The camera was disconnected.")); // it may be back before the list has missed it
}

void DeviceControl::watchStream()
{
    const unsigned frames = delivery_.frameCount();
    silentTicks_ = frames == framesSeen_ ? silentTicks_ + 1 : 0;
    framesSeen_ = frames;
    if (silentTicks_ == silentTicksToTell)
        view_.ShowNotice(tr("The camera delivers no picture."));
}
