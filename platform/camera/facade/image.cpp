// Handles, sizes, pixels and files.
#include "Codec.h"
#include "Impl.h"
#include "imageCalls.h"

#include <cstring>

using mirvak::Image;

namespace {

constexpr int channelCount = 3;

size_t byteCountOf(const Image& image)
{
    return image.pixels.total() * channelCount;
}

// Rows lie without padding, but a picture that was cut out of another need not.
void copyPixels(const Image& image, unsigned char* rgb)
{
    const size_t rowBytes = static_cast<size_t>(image.pixels.cols) * channelCount;
    if (image.pixels.isContinuous()) {
        std::memcpy(rgb, image.pixels.data, byteCountOf(image));
        return;
    }
    for (int y = 0; y < image.pixels.rows; ++y)
        std::memcpy(rgb + rowBytes * static_cast<size_t>(y), image.pixels.ptr(y), rowBytes);
}

int resultOf(mirvak::WriteResult written)
{
    switch (written) {
    case mirvak::WriteResult::ok:
        return MIRVAK_OK;
    case mirvak::WriteResult::ioError:
        return MIRVAK_IO_ERROR;
    case mirvak::WriteResult::nameTaken:
        return MIRVAK_EXISTS;
    case mirvak::WriteResult::unknownFormat:
    case mirvak::WriteResult::badPicture:
        break;
    }
    return MIRVAK_BAD_ARGUMENT;
}

} // namespace

void* MirvakCamera::MirvakImage_Clone(void* image)
{
    Image* clone = nullptr;
    mirvak::onImage("MirvakImage_Clone", image, [&](Image& source) {
        clone = std::make_unique<Image>(mirvak::share(source)).release();
        return MIRVAK_OK;
    });
    return clone;
}

int MirvakCamera::MirvakImage_Release(void* image)
{
    return mirvak::onImage("MirvakImage_Release", image, [&](Image& released) {
        impl_->pool.giveBack(std::unique_ptr<Image>(&released));
        return MIRVAK_OK;
    });
}

int MirvakCamera::MirvakImage_GetWidth(void* image)
{
    return image ? mirvak::imageOf(image)->pixels.cols : 0;
}

int MirvakCamera::MirvakImage_GetHeight(void* image)
{
    return image ? mirvak::imageOf(image)->pixels.rows : 0;
}

int MirvakCamera::MirvakImage_GetImageRGBData(void* image, unsigned char* rgb)
{
    return mirvak::onImage("MirvakImage_GetImageRGBData", image, [&](const Image& source) {
        if (!rgb)
            return MIRVAK_BAD_ARGUMENT;
        copyPixels(source, rgb);
        return MIRVAK_OK;
    });
}

std::shared_ptr<const unsigned char> MirvakCamera::MirvakImage_SharePixels(void* image)
{
    std::shared_ptr<const unsigned char> shared;
    mirvak::onImage("MirvakImage_SharePixels", image, [&](const Image& source) {
        shared = mirvak::lend(source);
        return MIRVAK_OK;
    });
    return shared;
}

int MirvakCamera::MirvakImage_GetImageData(void* image,
                                           unsigned char* buffer,
                                           int& width,
                                           int& height,
                                           int& channels,
                                           int& bitsPerChannel,
                                           int& stride,
                                           int& format,
                                           int& byteCount)
{
    return mirvak::onImage("MirvakImage_GetImageData", image, [&](const Image& source) {
        const size_t needed = byteCountOf(source);
        if (!buffer || byteCount < 0 || static_cast<size_t>(byteCount) < needed)
            return MIRVAK_BAD_ARGUMENT;
        copyPixels(source, buffer);
        width = source.pixels.cols;
        height = source.pixels.rows;
        channels = channelCount;
        bitsPerChannel = 8;
        stride = width * channelCount;
        format = 0;
        byteCount = static_cast<int>(needed);
        return MIRVAK_OK;
    });
}

namespace {

int save(const char* call, const char* path, void* image, int quality, mirvak::Readers readers)
{
    return mirvak::onImage(call, image, [&](const Image& source) {
        if (!path || !*path)
            return MIRVAK_BAD_ARGUMENT;
        return static_cast<MirvakResult>(resultOf(mirvak::writeImage(path, source, quality, readers)));
    });
}

} // namespace

int MirvakCamera::MirvakImage_Save(const char* path, void* image, int quality, int)
{
    return save("MirvakImage_Save", path, image, quality, mirvak::Readers::all);
}

int MirvakCamera::MirvakImage_SavePrivate(const char* path, void* image, int quality)
{
    return save("MirvakImage_SavePrivate", path, image, quality, mirvak::Readers::owner);
}
