#pragma once

#include "Image.h"
#include "SharedPixels.h"
#include "mirvakcamera.h"

#include <opencv2/core.hpp>

#include <cstdio>
#include <exception>
#include <new>

namespace mirvak {

/// The image behind a handle; null for null.
inline Image* imageOf(void* handle)
{
    return static_cast<Image*>(handle);
}

/// Runs one image call. What it throws becomes a result code and one line on standard error, for no exception
/// may leave the library.
template <class Call> int guarded(const char* name, Call&& call) noexcept
{
    try {
        return call();
    } catch (const std::bad_alloc&) {
        std::fprintf(stderr, "%s: out of memory\n", name);
        return MIRVAK_NO_MEMORY;
    } catch (const cv::Exception& error) {
        std::fprintf(stderr, "%s: %s\n", name, error.what());
        return error.code == cv::Error::StsNoMem ? MIRVAK_NO_MEMORY : MIRVAK_BAD_ARGUMENT;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s: %s\n", name, error.what());
        return MIRVAK_BAD_ARGUMENT;
    } catch (...) {
        return MIRVAK_BAD_ARGUMENT;
    }
}

/// The same for a call that reads one image.
template <class Call> int onImage(const char* name, void* handle, Call&& call) noexcept
{
    Image* image = imageOf(handle);
    if (!image)
        return MIRVAK_BAD_HANDLE;
    return guarded(name, [&] { return call(*image); });
}

/// For a call that writes into the pixels where they are.
template <class Call> int onOwnImage(const char* name, void* handle, Call&& call) noexcept
{
    return onImage(name, handle, [&](Image& image) {
        makeOwn(image);
        return call(image);
    });
}

/// For a call that makes the picture anew in the spare buffer.
template <class Call> int onRemadeImage(const char* name, void* handle, Call&& call) noexcept
{
    return onImage(name, handle, [&](Image& image) {
        const int result = call(image);
        dropSharedSpare(image);
        return result;
    });
}

} // namespace mirvak
