#include "Impl.h"

MirvakCamera::MirvakCamera() : impl_(std::make_unique<Impl>()) {}

MirvakCamera::~MirvakCamera() = default;

int MirvakCamera::MirvakColor_SetRgbaToInt(int red, int green, int blue, int alpha)
{
    const auto byte = [](int value) { return static_cast<unsigned>(value) & 0xffU; };
    return static_cast<int>(byte(alpha) << 24 | byte(red) << 16 | byte(green) << 8 | byte(blue));
}
