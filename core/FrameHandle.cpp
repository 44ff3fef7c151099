#include "FrameHandle.h"

#include "mirvakcamera.h"

void ReleaseImage::operator()(void* image) const noexcept
{
    camera->MirvakImage_Release(image);
}
