// The running stream of a camera and its paper size.
#include "Impl.h"
#include "PaperSize.h"
#include "imageCalls.h"

int MirvakCamera::MirvakDevice_StartPreview(
    void* device, int format, int resolutionIndex, int frameMode, MirvakFrameCallback callback, void* context)
{
    return mirvak::guarded("MirvakDevice_StartPreview", [&]() -> int {
        const auto camera = impl_->cameras.find(device);
        if (!camera)
            return MIRVAK_BAD_HANDLE;
        if (!callback || frameMode < 1)
            return MIRVAK_BAD_ARGUMENT;
        const auto sink = [callback, context](mirvak::Image* image) {
            const cv::Size size = image ? image->pixels.size() : cv::Size();
            callback(image, nullptr, size.area() * 3, size.width, size.height, context);
        };
        // One of the frames of the mode is the one that the callback holds.
        const int waiting = std::max(1, frameMode - 1);
        return camera->start(format, resolutionIndex, waiting, sink);
    });
}

int MirvakCamera::MirvakDevice_StopPreview(void* device)
{
    return mirvak::guarded("MirvakDevice_StopPreview", [&] {
        const auto camera = impl_->cameras.find(device);
        return camera ? camera->stop() : MIRVAK_BAD_HANDLE;
    });
}

int MirvakCamera::MirvakDevice_SetCameraSize(void* device, int size)
{
    return mirvak::guarded("MirvakDevice_SetCameraSize", [&] {
        const auto camera = impl_->cameras.find(device);
        return camera ? camera->setPaperSize(size) : MIRVAK_BAD_HANDLE;
    });
}

int MirvakCamera::MirvakDevice_JudgeCameraSize(void* device, void* image, int& size, double low, double high)
{
    return mirvak::onImage("MirvakDevice_JudgeCameraSize", image, [&](const mirvak::Image& picture) {
        const auto camera = impl_->cameras.find(device);
        if (!camera)
            return MIRVAK_BAD_HANDLE;
        const auto better = mirvak::judgePaperSize(picture.pixels, camera->paperSize(), low, high);
        if (!better)
            return MIRVAK_NOT_FOUND;
        size = *better;
        return MIRVAK_OK;
    });
}
