#include "SharedPicture.h"

#include "mirvakcamera.h"

QImage sharedPicture(MirvakCamera& camera, void* image)
{
    using Pixels = std::shared_ptr<const unsigned char>;
    const int width = camera.MirvakImage_GetWidth(image);
    auto pixels = std::make_unique<Pixels>(camera.MirvakImage_SharePixels(image));
    if (!*pixels)
        return {};
    const uchar* rgb = pixels->get();
    const auto letGo = [](void* held) { delete static_cast<Pixels*>(held); };
    return {rgb,
            width,
            camera.MirvakImage_GetHeight(image),
            width * 3,
            QImage::Format_RGB888,
            letGo,
            pixels.release()};
}
