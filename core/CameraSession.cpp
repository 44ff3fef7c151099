#include "CameraSession.h"

#include "ControlStore.h"
#include "Settings.h"

#include <QDebug>

#include <algorithm>

namespace {

constexpr int rawFormat = 1;
constexpr int compressedFormat = 2;
constexpr int newestFrameOnly = 2;
constexpr QSize fallbackSize(1920, 1080);
constexpr auto paperSizeModel = "1b171840"; // the one model whose picture can be set to a paper size
constexpr int paperA4 = 4;
constexpr int paperA3 = 3;

QSize parseSize(const QString& text)
{
    const QStringList parts = text.split(QLatin1Char('*'));
    if (parts.size() != 2)
        return fallbackSize;
    const QSize size(parts[0].trimmed().toInt(), parts[1].trimmed().toInt());
    return size.isEmpty() ? fallbackSize : size;
}

} // namespace

CameraSession::CameraSession(MirvakCamera& camera,
                             MirvakFrameCallback callback,
                             void* context,
                             QObject* parent)
    : QObject(parent), camera_(camera), callback_(callback), context_(context)
{
}

CameraSession::~CameraSession()
{
    shutDown();
}

int CameraSession::discover()
{
    const std::lock_guard lock(cameraMutex_);
    cameras_.clear();
    initialised_ = camera_.MirvakDevs_Init() == MIRVAK_OK;
    if (!initialised_)
        return -1;
    list();
    logCount();
    // Told on a thread of the library; the list belongs to the GUI thread.
    const auto tell = [](void* self) {
        auto* session = static_cast<CameraSession*>(self);
        QMetaObject::invokeMethod(
            session, [session] { session->refresh(); }, Qt::QueuedConnection);
    };
    camera_.MirvakDevs_Watch(tell, this);
    return cameras_.size();
}

void CameraSession::refresh()
{
    if (!initialised_ || camera_.MirvakDevs_Refresh() != MIRVAK_OK)
        return;
    const int before = cameras_.size();
    list();
    if (cameras_.size() != before)
        logCount();
    Q_EMIT camerasChanged();
}

void CameraSession::logCount() const
{
    qDebug() << "devcount:" << cameras_.size();
}

void CameraSession::list()
{
    cameras_.clear();
    for (int index = 0; index < camera_.MirvakDevice_GetDevCount(); ++index) {
        cameras_ << Camera{QString::fromStdString(camera_.MirvakDevice_GetDevIdentity(index)),
                           QString::fromStdString(camera_.MirvakDevice_GetFriendlyName(index)),
                           QString::fromStdString(camera_.MirvakDevice_GetDevUsbID(index)),
                           camera_.MirvakDevice_GetCameraType(index)};
    }
    if (const int row = rowOf(cameras_, current_.identity); row >= 0)
        current_ = cameras_[row];
}

bool CameraSession::hasSecondCamera() const
{
    return std::any_of(
        cameras_.begin(), cameras_.end(), [](const Camera& camera) { return !camera.isMain(); });
}

bool CameraSession::create(const QString& identity)
{
    if (device_)
        return true;
    Q_EMIT opening(identity);
    // The list and the library's indices change together, so a row is an index here and now.
    const int row = rowOf(cameras_, identity);
    device_ = camera_.MirvakDevice_Create(row);
    failure_ = MirvakResult(camera_.MirvakDevice_GetCreateResult());
    if (row >= 0)
        current_ = cameras_[row];
    return device_ != nullptr;
}

CameraSession::OpenResult CameraSession::select(const QString& identity)
{
    const std::lock_guard lock(cameraMutex_);
    closeCamera();
    return create(identity) ? OpenResult::Ok : OpenResult::CreateFailed;
}

int CameraSession::format() const
{
    return camera_.MirvakDevice_GetSubtype(device_) == rawFormat ? rawFormat : compressedFormat;
}

QStringList CameraSession::resolutions() const
{
    QStringList list;
    const int count = device_ ? camera_.MirvakDevice_GetResolutionSize(device_, format()) : 0;
    for (int i = 0; i < count; ++i) {
        list << QStringLiteral("%1*%2")
                    .arg(camera_.MirvakDevice_GetResolutionWidth(device_, format(), i))
                    .arg(camera_.MirvakDevice_GetResolutionHeight(device_, format(), i));
    }
    return list;
}

CameraSession::OpenResult CameraSession::start(int resolutionIndex, const QString& resolutionText)
{
    const std::lock_guard lock(cameraMutex_);
    if (!create(current_.identity))
        return OpenResult::CreateFailed;
    size_ = parseSize(resolutionText);
    setStoredSize();
    restoreControls(camera_, device_, current_.identity); // no frame is shown without
    const int subtype = camera_.MirvakDevice_GetSubtype(device_);
    failure_ = MirvakResult(openCamera(device_, subtype, resolutionIndex, newestFrameOnly, callback_));
    if (failure_ == MIRVAK_OK) {
        Q_EMIT started();
        return OpenResult::Ok;
    }
    closeCamera();
    return OpenResult::StartFailed;
}

int CameraSession::openCamera(
    void* device, int subtype, int resolutionIndex, int frameMode, MirvakFrameCallback callback)
{
    const int stream = subtype == rawFormat ? rawFormat : compressedFormat;
    runningStream_ = ++streamNumber_;
    const int result =
        camera_.MirvakDevice_StartPreview(device, stream, resolutionIndex, frameMode, callback, context_);
    if (result == MIRVAK_OK)
        state_ = Streaming;
    return result;
}

void CameraSession::closeCamera()
{
    checkPaperSize_ = false;
    if (!device_)
        return;
    Q_EMIT closing();
    camera_.MirvakDevice_StopPreview(device_);
    sizedDevice_ = nullptr;
    camera_.MirvakDevice_Release(device_);
    device_ = nullptr;
    runningStream_ = ++streamNumber_;
    state_ = Closed;
}

void CameraSession::shutDown()
{
    closeCamera();
    if (initialised_)
        camera_.MirvakDevs_Deinit();
    initialised_ = false;
}

bool CameraSession::isSizable() const
{
    return device_ && current_.usbId == QLatin1String(paperSizeModel);
}

/// A camera that was closed may have kept its zoom, or lost what it was told: it is told again.
void CameraSession::setStoredSize()
{
    if (isSizable())
        camera_.MirvakDevice_SetCameraSize(device_, paperA3);
    setScanSize(settings::scanSize.read());
}

void CameraSession::setScanSize(int choice)
{
    checkPaperSize_ = false;
    if (!isSizable())
        return;
    sizedDevice_ = device_;
    checkPaperSize_ = choice == 0;
    if (choice == 1 || choice == 2)
        camera_.MirvakDevice_SetCameraSize(device_, choice == 1 ? paperA4 : paperA3);
}

void CameraSession::checkPaperSize(void* image)
{
    void* device = sizedDevice_;
    if (!checkPaperSize_ || !device)
        return;
    int size = paperA4;
    const bool isJudged = camera_.MirvakDevice_JudgeCameraSize(device, image, size, 0.0, 0.9) == MIRVAK_OK;
    if (isJudged && checkPaperSize_) // the user may have chosen a size meanwhile
        camera_.MirvakDevice_SetCameraSize(device, size);
}

void CameraSession::noteStreamEnded()
{
    const unsigned stream = runningStream_;
    // The device is closed on the GUI thread: a capture thread cannot wait for its own end.
    QMetaObject::invokeMethod(
        this,
        [this, stream] {
            if (stream == streamNumber_)
                handleLoss();
        },
        Qt::QueuedConnection);
}

void CameraSession::handleLoss()
{
    closeCamera();
    state_ = Lost;
    Q_EMIT deviceLost();
}
