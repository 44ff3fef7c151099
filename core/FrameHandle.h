#pragma once

#include <memory>

class MirvakCamera;

/// Releases an image handle through the camera library it came from.
struct ReleaseImage
{
    MirvakCamera* camera = nullptr;
    void operator()(void* image) const noexcept;
};

/// Owns one image handle of the camera library. No bare handle outlives the line that received it.
using FrameHandle = std::unique_ptr<void, ReleaseImage>;

inline FrameHandle ownImage(MirvakCamera& camera, void* image)
{
    return FrameHandle(image, ReleaseImage{&camera});
}
