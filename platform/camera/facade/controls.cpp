// What can be set at an open camera, and its focus.
#include "Impl.h"
#include "imageCalls.h"

int MirvakCamera::MirvakDevice_GetControlCount(void* device)
{
    return mirvak::guarded("MirvakDevice_GetControlCount", [&] {
        const auto camera = impl_->cameras.find(device);
        return camera ? static_cast<int>(camera->device().controls().size()) : 0;
    });
}

int MirvakCamera::MirvakDevice_GetControl(void* device, int index, MirvakControlInfo& info)
{
    return mirvak::guarded("MirvakDevice_GetControl", [&]() -> int {
        const auto camera = impl_->cameras.find(device);
        if (!camera)
            return MIRVAK_BAD_HANDLE;
        const std::vector<MirvakControl> controls = camera->device().controls();
        if (index < 0 || static_cast<size_t>(index) >= controls.size())
            return MIRVAK_BAD_ARGUMENT;
        return camera->device().readControl(controls[static_cast<size_t>(index)], info);
    });
}

int MirvakCamera::MirvakDevice_SetControl(void* device, int control, int value)
{
    return mirvak::guarded("MirvakDevice_SetControl", [&]() -> int {
        const auto camera = impl_->cameras.find(device);
        if (!camera)
            return MIRVAK_BAD_HANDLE;
        if (control < MIRVAK_FOCUS_AUTO || control > MIRVAK_ANTI_FLICKER)
            return MIRVAK_BAD_ARGUMENT;
        return camera->setControl(static_cast<MirvakControl>(control), value);
    });
}

int MirvakCamera::MirvakDevice_FocusAt(void* device, double x, double y)
{
    return mirvak::guarded("MirvakDevice_FocusAt", [&]() -> int {
        const auto camera = impl_->cameras.find(device);
        return camera ? camera->focus().begin(x, y) : MIRVAK_BAD_HANDLE;
    });
}

int MirvakCamera::MirvakDevice_GetFocusState(void* device)
{
    return mirvak::guarded("MirvakDevice_GetFocusState", [&]() -> int {
        const auto camera = impl_->cameras.find(device);
        return camera ? camera->focus().state() : MIRVAK_BAD_HANDLE;
    });
}
