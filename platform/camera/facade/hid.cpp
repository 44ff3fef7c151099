// The keys on the cameras and on the virtual desk.
#include "Impl.h"
#include "imageCalls.h"

namespace {

mirvak::KeyListener::Press reportTo(MirvakKeyCallback callback, void* context)
{
    return [callback, context](int key) {
        if (callback)
            callback(key, context);
    };
}

} // namespace

int MirvakCamera::MirvakHid_Init(MirvakKeyCallback key,
                                 void* keyContext,
                                 MirvakKeyCallback usbKey,
                                 void* usbKeyContext)
{
    return mirvak::guarded("MirvakHid_Init", [&] {
        if (!impl_->desk)
            impl_->desk = DeskConfig::fromEnvironment();
        std::optional<std::filesystem::path> fifo;
        if (impl_->desk && impl_->desk->keys)
            fifo = impl_->desk->keys->fifo;
        const bool listens =
            impl_->keys.start(reportTo(usbKey, usbKeyContext), reportTo(key, keyContext), fifo);
        return listens ? MIRVAK_OK : MIRVAK_NO_DEVICE;
    });
}

int MirvakCamera::MirvakHid_Deinit()
{
    return mirvak::guarded("MirvakHid_Deinit", [&] {
        impl_->keys.stop();
        return MIRVAK_OK;
    });
}
