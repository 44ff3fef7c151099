#include "FaceFrames.h"

#include "mirvakcamera.h"

namespace {

constexpr std::chrono::seconds silence(3); // longer than a camera takes for its first frame

} // namespace

FaceFrames::FaceFrames(MirvakCamera& camera, Show show)
    : camera_(camera), show_(std::move(show)), channel_(camera)
{
}

void FaceFrames::begin(FaceRole role)
{
    const std::lock_guard lock(mutex_);
    last_[size_t(role)] = Clock::now();
}

void FaceFrames::want(FaceRole role)
{
    const std::lock_guard lock(mutex_);
    wanted_ = role;
}

/// Under the lock.
bool FaceFrames::serves(FaceRole role, FaceRole wanted)
{
    return role == wanted || Clock::now() - last_[size_t(wanted)] > silence;
}

void FaceFrames::onFrame(FaceRole role, void* image, int width, int height)
{
    bool isShown = false, isOffered = false;
    {
        const std::lock_guard lock(mutex_);
        last_[size_t(role)] = Clock::now();
        isShown = serves(role, FaceRole::colour);
        isOffered = serves(role, wanted_);
    }
    if (isOffered)
        channel_.offer(image);
    if (!isShown)
        return;
    auto buffer = buffers_.take(static_cast<size_t>(width) * height * 3);
    camera_.MirvakImage_GetImageRGBData(image, buffer->pixels.data());
    show_(PreviewBuffers::wrap(std::move(buffer), width, height));
}
