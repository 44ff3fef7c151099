#include "FaceCameras.h"

#include "FaceCameraChoice.h"

namespace {

constexpr int framesThatMayWait = 1;

} // namespace

FaceCameras::FaceCameras(MirvakCamera& camera,
                         MirvakFrameCallback colour,
                         MirvakFrameCallback infrared,
                         void* context,
                         FaceFrames::Show show)
    : camera_(camera), context_(context), frames_(camera, std::move(show))
{
    lenses_[size_t(FaceRole::colour)].callback = colour;
    lenses_[size_t(FaceRole::infrared)].callback = infrared;
}

FaceCameras::Result FaceCameras::open()
{
    close();
    const faceCameraChoice::Found found = faceCameraChoice::find(camera_);
    if (!found.isAny())
        return Result::NoneFound;
    if (!start(FaceRole::colour, found.colour))
        return Result::Failed;
    if (found.infrared >= 0)
        start(FaceRole::infrared, found.infrared);
    return Result::Ok;
}

bool FaceCameras::start(FaceRole role, int index)
{
    Lens& lens = lenses_[size_t(role)];
    lens.device = camera_.MirvakDevice_Create(index);
    if (!lens.device)
        return false;
    ++lens.streamNumber;
    frames_.begin(role);
    frames_.channel().resume();
    const int resolution = faceCameraChoice::resolution(camera_, lens.device);
    if (camera_.MirvakDevice_StartPreview(
            lens.device, format, resolution, framesThatMayWait, lens.callback, context_) == MIRVAK_OK)
        return true;
    stop(role);
    return false;
}

void FaceCameras::stop(FaceRole role)
{
    Lens& lens = lenses_[size_t(role)];
    ++lens.streamNumber;
    if (lens.device) {
        camera_.MirvakDevice_StopPreview(lens.device);
        camera_.MirvakDevice_Release(lens.device);
        lens.device = nullptr;
    }
    frames_.end(role); // after its last frame, which would say that a stream runs
}

void FaceCameras::close()
{
    stop(FaceRole::colour);
    stop(FaceRole::infrared);
}

void FaceCameras::onFrame(FaceRole role, void* image)
{
    if (image)
        frames_.onFrame(role, image);
    else
        noteEnd(role);
}

void FaceCameras::noteEnd(FaceRole role)
{
    frames_.end(role);
    const unsigned stream = lenses_[size_t(role)].streamNumber;
    // The device is closed on the GUI thread: a camera's thread cannot wait for its own end.
    QMetaObject::invokeMethod(
        this,
        [this, role, stream] {
            if (stream != lenses_[size_t(role)].streamNumber)
                return;
            stop(role);
            Q_EMIT lost();
        },
        Qt::QueuedConnection);
}
