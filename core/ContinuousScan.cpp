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

bool ContinuousScan::scannerimage(const TakeFrame& take)
{
    if (!capture_.isStreaming())
        return false;
    const FrameHandle image = take(frameTimeout);
    return image && save(image.get());
}

bool ContinuousScan::save(void* image)
{
    const SavedPages saved = capture_.savePages(image, settings::scanType.read());
    for (const QString& path : saved.paths)
        Q_EMIT pictureSaved(path);
    if (saved.failed > 0)
        Q_EMIT saveFailed();
    return !saved.paths.isEmpty();
}

void ContinuousScan::onAutoScanTiemr()
{
    pendingCapture_ = 1;
    workers_.start([this] { timescanner(); });
}

// A tick may come while the capture of the last one still waits for its frame; the first that gets one
// settles all, so that a camera that stood still is not followed by a burst of the same picture.
void ContinuousScan::timescanner()
{
    if (pendingCapture_ == 0 || !capture_.isStreaming())
        return;
    const FrameHandle image = capture_.take(frameTimeout);
    if (image && pendingCapture_.exchange(0) != 0)
        save(image.get());
}
