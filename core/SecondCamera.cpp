#include "SecondCamera.h"

#include "ControlStore.h"
#include "SharedPicture.h"

namespace {

constexpr int rawFormat = 1;
constexpr int compressedFormat = 2;
constexpr int firstResolution = 0;
constexpr int framesThatMayWait = 4;

} // namespace

SecondCamera::SecondCamera(
    MirvakCamera& camera, MirvakFrameCallback callback, void* context, Show show, QObject* parent)
    : QObject(parent), camera_(camera), callback_(callback), context_(context), show_(std::move(show)),
      channel_(camera)
{
}

SecondCamera::~SecondCamera()
{
    stop();
}

int SecondCamera::find(const QString& mainIdentity) const
{
    const int count = camera_.MirvakDevice_GetDevCount();
    // The only camera is nobody's second one: it is chosen in the box of the cameras.
    for (int index = 0; count > 1 && index < count; ++index) {
        const int type = camera_.MirvakDevice_GetCameraType(index);
        const bool isOther = camera_.MirvakDevice_GetDevIdentity(index) != mainIdentity.toStdString();
        if (isOther && (type == 2 || type == 3))
            return index;
    }
    return -1;
}

SecondCamera::OpenResult SecondCamera::start(const QString& mainIdentity)
{
    stop();
    const int index = find(mainIdentity);
    if (index < 0)
        return OpenResult::NoneFound;
    device_ = camera_.MirvakDevice_Create(index);
    if (!device_)
        return OpenResult::CreateFailed;
    identity_ = QString::fromStdString(camera_.MirvakDevice_GetDevIdentity(index));
    const bool isRaw = camera_.MirvakDevice_GetSubtype(device_) == rawFormat;
    restoreControls(camera_, device_, identity_);
    ++streamNumber_;
    channel_.resume();
    if (camera_.MirvakDevice_StartPreview(device_,
                                          isRaw ? rawFormat : compressedFormat,
                                          firstResolution,
                                          framesThatMayWait,
                                          callback_,
                                          context_) == MIRVAK_OK)
        return OpenResult::Ok;
    stop();
    return OpenResult::StartFailed;
}

void SecondCamera::stop()
{
    ++streamNumber_;
    if (device_) {
        camera_.MirvakDevice_StopPreview(device_);
        camera_.MirvakDevice_Release(device_);
        device_ = nullptr;
        identity_.clear();
    }
    channel_.interrupt(); // after the last frame, which would say that the stream runs
}

void SecondCamera::onFrame(void* image)
{
    if (!image) {
        noteStreamEnded();
        return;
    }
    show_(sharedPicture(camera_, image));
    channel_.offer(image);
}

void SecondCamera::noteStreamEnded()
{
    channel_.interrupt(); // a capture that waits would only time out
    const unsigned stream = streamNumber_;
    // The device is closed on the GUI thread: a capture thread cannot wait for its own end.
    QMetaObject::invokeMethod(
        this,
        [this, stream] {
            if (stream != streamNumber_)
                return;
            stop();
            Q_EMIT lost();
        },
        Qt::QueuedConnection);
}
