// The list of cameras, opening and closing them, and what they offer.
#include "DeskBackend.h"
#include "Impl.h"
#include "UserConfig.h"
#include "V4l2Backend.h"
#include "imageCalls.h"

namespace {

mirvak::Backends makeBackends(const std::optional<DeskConfig>& desk)
{
    mirvak::Backends backends;
    // A broken file may be mended while the program runs.
    if (const std::filesystem::path file = DeskConfig::pathInEnvironment(); !file.empty())
        backends.push_back(std::make_shared<mirvak::DeskBackend>(desk.value_or(DeskConfig()), file));
    if (!desk || desk->realDevices)
        backends.push_back(std::make_shared<mirvak::V4l2Backend>());
    return backends;
}

} // namespace

int MirvakCamera::MirvakDevs_Init()
{
    return mirvak::guarded("MirvakDevs_Init", [&] {
        impl_->desk = DeskConfig::fromEnvironment();
        return impl_->cameras.init(makeBackends(impl_->desk),
                                   mirvak::readTypeOverrides(userConfigFile("cameras.cfg")));
    });
}

int MirvakCamera::MirvakDevs_Refresh()
{
    return mirvak::guarded("MirvakDevs_Refresh", [&] { return impl_->cameras.refresh(); });
}

int MirvakCamera::MirvakDevs_Watch(MirvakDevsCallback changed, void* context)
{
    return mirvak::guarded("MirvakDevs_Watch", [&] {
        std::function<void()> call;
        if (changed)
            call = [changed, context] { changed(context); };
        return impl_->cameras.watch(call);
    });
}

int MirvakCamera::MirvakDevs_Deinit()
{
    return mirvak::guarded("MirvakDevs_Deinit", [&] {
        impl_->cameras.clear();
        return MIRVAK_OK;
    });
}

int MirvakCamera::MirvakDevice_GetDevCount()
{
    return impl_->cameras.count();
}

std::string MirvakCamera::MirvakDevice_GetFriendlyName(int index)
{
    const mirvak::CameraInfo* camera = impl_->cameras.info(index);
    return camera ? camera->name : std::string();
}

std::string MirvakCamera::MirvakDevice_GetDevUsbID(int index)
{
    const mirvak::CameraInfo* camera = impl_->cameras.info(index);
    return camera ? camera->usbId : std::string();
}

std::string MirvakCamera::MirvakDevice_GetDevIdentity(int index)
{
    const mirvak::CameraInfo* camera = impl_->cameras.info(index);
    return camera ? camera->identity : std::string();
}

int MirvakCamera::MirvakDevice_GetCameraType(int index)
{
    const mirvak::CameraInfo* camera = impl_->cameras.info(index);
    return camera ? camera->type : 0;
}

void* MirvakCamera::MirvakDevice_Create(int index)
{
    void* handle = nullptr;
    mirvak::guarded("MirvakDevice_Create", [&] {
        handle = impl_->cameras.open(index);
        return MIRVAK_OK;
    });
    return handle;
}

int MirvakCamera::MirvakDevice_GetCreateResult()
{
    return impl_->cameras.openResult();
}

int MirvakCamera::MirvakDevice_Release(void* device)
{
    return mirvak::guarded("MirvakDevice_Release", [&] { return impl_->cameras.close(device); });
}

int MirvakCamera::MirvakDevice_GetSubtype(void* device)
{
    const auto camera = impl_->cameras.find(device);
    return camera ? camera->modes().betterFormat() : 0;
}

int MirvakCamera::MirvakDevice_GetResolutionSize(void* device, int format)
{
    const auto camera = impl_->cameras.find(device);
    return camera ? static_cast<int>(camera->modes().of(format).size()) : 0;
}

int MirvakCamera::MirvakDevice_GetResolutionWidth(void* device, int format, int index)
{
    const auto camera = impl_->cameras.find(device);
    const mirvak::CameraMode* mode = camera ? camera->modes().find(format, index) : nullptr;
    return mode ? mode->width : 0;
}

int MirvakCamera::MirvakDevice_GetResolutionHeight(void* device, int format, int index)
{
    const auto camera = impl_->cameras.find(device);
    const mirvak::CameraMode* mode = camera ? camera->modes().find(format, index) : nullptr;
    return mode ? mode->height : 0;
}
