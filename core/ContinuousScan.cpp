#include "ContinuousScan.h"

#include "Settings.h"
#include "StillCapture.h"
#include "mirvakcamera.h"

namespace {

constexpr std::chrono::seconds frameTimeout(10);
constexpr double newPageThreshold = 0.32;

} // namespace

ContinuousScan::ContinuousScan(MirvakCamera& camera, StillCapture& capture, QObject* parent)
    : QObject(parent), camera_(camera), capture_(capture)
{
}

ContinuousScan::~ContinuousScan()
{
    finish();
}

void ContinuousScan::finish()
{
    stop();
    pendingCapture_ = 0;
    workers_.finish();
}

void ContinuousScan::startPages()
{
    forgetsPage_ = true;
    watchesPages_ = true;
}

void ContinuousScan::stop()
{
    watchesPages_ = false;
}

void ContinuousScan::checkautopage(void* image)
{
    if (!watchesPages_)
        return;
    bool flag = true;
    double value = 0.0;
    const bool reset = forgetsPage_.exchange(false);
    const int result = camera_.MirvakImage_CheckPage(image, flag, value, reset, newPageThreshold);
    if (result == MIRVAK_OK && !flag)
        Q_EMIT autopageScanSign();
}

bool ContinuousScan::scannerimage()
{
    return capture_.isStreaming() && !captureOne().value_or(QString()).isEmpty();
}

/// The path, empty when it could not be saved; nothing when no frame came.
std::optional<QString> ContinuousScan::captureOne()
{
    const int colourMode = settings::scanType.read();
    const FrameHandle image = capture_.take(frameTimeout);
    if (!image)
        return std::nullopt;
    QString path = capture_.save(image.get(), colourMode);
    if (path.isEmpty())
        Q_EMIT saveFailed();
    else
        Q_EMIT pictureSaved(path);
    return path;
}

void ContinuousScan::onAutoScanTiemr()
{
    pendingCapture_ = 1;
    workers_.start([this] { timescanner(); });
}

// A tick may come while the capture of the last one still waits for its frame; the first that is done settles
// both, so that a camera that stood still is not followed by a burst of the same picture.
void ContinuousScan::timescanner()
{
    if (pendingCapture_ == 0 || !capture_.isStreaming())
        return;
    if (captureOne())
        pendingCapture_ = 0;
}
