#include "SharedPixels.h"

#include <utility>

namespace mirvak {

bool isShared(const cv::Mat& pixels)
{
    // Other threads count down as they let go. When only one is left, that is the caller, and nobody can come
    // back.
    return pixels.u && __atomic_load_n(&pixels.u->refcount, __ATOMIC_ACQUIRE) > 1;
}

Image share(const Image& image)
{
    Image copy;
    copy.pixels = image.pixels.u ? image.pixels : image.pixels.clone(); // without a counter: a loan
    copy.dpi = image.dpi;
    copy.taken = image.taken;
    return copy;
}

void makeOwn(Image& image)
{
    if (!isShared(image.pixels))
        return;
    image.pixels.copyTo(image.spare);
    std::swap(image.pixels, image.spare);
    image.spare.release();
}

void dropSharedSpare(Image& image)
{
    if (isShared(image.spare))
        image.spare.release();
}

} // namespace mirvak
