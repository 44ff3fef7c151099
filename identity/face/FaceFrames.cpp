#include "FaceFrames.h"

#include "SharedPicture.h"

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
    streams_[size_t(role)] = true;
}

void FaceFrames::end(FaceRole role)
{
    const std::lock_guard lock(mutex_);
    streams_[size_t(role)] = false;
    if (!streams_[0] && !streams_[1])
        channel_.interrupt();
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

void FaceFrames::onFrame(FaceRole role, void* image)
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
    show_(sharedPicture(camera_, image));
}
