#include "CameraSession.h"

#include "Settings.h"

#include <QDebug>

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
    names_.clear();
    defaultDevice_ = -1;
    hasSecondCamera_ = false;
    const int result = camera_.MirvakDevs_Init();
    initialised_ = result == MIRVAK_OK;
    if (!initialised_)
        return -1;
    const int count = camera_.MirvakDevice_GetDevCount();
    if (count != count_) // the search for a missing camera would repeat itself for ever
        qDebug() << "devcount:" << count;
    count_ = count;
    for (int index = 0; index < count; ++index) {
        names_ << QString::fromStdString(camera_.MirvakDevice_GetFriendlyName(index));
        if (!isMainCamera(index))
            hasSecondCamera_ = true;
        else if (defaultDevice_ < 0)
            defaultDevice_ = index;
    }
    return count;
}

int CameraSession::indexOf(const QString& usbId) const
{
    for (int index = 0; index < names_.size(); ++index) {
        if (QString::fromStdString(camera_.MirvakDevice_GetDevUsbID(index)) == usbId)
            return index;
    }
    return -1;
}

bool CameraSession::create(int index)
{
    if (!device_)
        device_ = camera_.MirvakDevice_Create(index);
    index_ = index;
    return device_ != nullptr;
}

CameraSession::OpenResult CameraSession::select(int index)
{
    const std::lock_guard lock(cameraMutex_);
    closeCamera();
    return create(index) ? OpenResult::Ok : OpenResult::CreateFailed;
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
    if (!create(index_))
        return OpenResult::CreateFailed;
    size_ = parseSize(resolutionText);
    const int subtype = camera_.MirvakDevice_GetSubtype(device_);
    if (openCamera(device_, subtype, resolutionIndex, newestFrameOnly, callback_) != MIRVAK_OK)
        return OpenResult::StartFailed;
    setScanSize(settings::scanSize.read() == 0 ? 0 : -1);
    return OpenResult::Ok;
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

QString CameraSession::currentUsbId() const
{
    return QString::fromStdString(camera_.MirvakDevice_GetDevUsbID(index_));
}

void CameraSession::setScanSize(int choice)
{
    checkPaperSize_ = false;
    if (!device_ || currentUsbId() != QLatin1String(paperSizeModel))
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
    if (camera_.MirvakDevice_JudgeCameraSize(device, image, size, 0.0, 0.9) == MIRVAK_OK)
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
