// Turning, cutting, scaling, joining.
#include "Geometry.h"
#include "Impl.h"
#include "Rotate.h"
#include "imageCalls.h"

#include <cmath>

using mirvak::Image;

int MirvakCamera::MirvakImage_Rotate(void* image, double degrees)
{
    return mirvak::onRemadeImage("MirvakImage_Rotate", image, [&](Image& turned) {
        if (!std::isfinite(degrees))
            return MIRVAK_BAD_ARGUMENT;
        mirvak::rotate(turned, degrees);
        return MIRVAK_OK;
    });
}

int MirvakCamera::MirvakImage_Crop(void* image, int left, int top, int width, int height)
{
    return mirvak::onRemadeImage("MirvakImage_Crop", image, [&](Image& cut) {
        return mirvak::crop(cut, left, top, width, height) ? MIRVAK_OK : MIRVAK_BAD_ARGUMENT;
    });
}

int MirvakCamera::MirvakImage_Resize(void* image, int width, int height, int mode)
{
    return mirvak::onRemadeImage("MirvakImage_Resize", image, [&](Image& scaled) {
        if (mode < 0 || mode > 3)
            return MIRVAK_BAD_ARGUMENT;
        const bool done = mirvak::resize(scaled, width, height, static_cast<mirvak::Scaling>(mode));
        return done ? MIRVAK_OK : MIRVAK_BAD_ARGUMENT;
    });
}

void* MirvakCamera::MirvakImage_Merge(void* base, void* inset, int x, int y, int width, int height)
{
    void* result = nullptr;
    if (!inset)
        return nullptr;
    mirvak::onImage("MirvakImage_Merge", base, [&](const Image& ground) {
        auto merged = impl_->pool.take(ground.pixels.cols, ground.pixels.rows);
        if (!mirvak::merge(ground, *mirvak::imageOf(inset), {x, y, width, height}, *merged))
            return MIRVAK_BAD_ARGUMENT;
        result = merged.release();
        return MIRVAK_OK;
    });
    return result;
}
