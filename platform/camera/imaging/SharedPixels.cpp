#include "SharedPixels.h"

#include <utility>

namespace mirvak {

namespace {

struct Loan
{
    explicit Loan(const Image& image)
        : pixels(image.pixels.u && image.pixels.isContinuous() ? image.pixels : image.pixels.clone())
    {
    }
    // What the reader did comes before what isShared() lets others do. The count that the matrix itself takes
    // back would do, but that happens in a library that the thread sanitizer does not see into.
    ~Loan()
    {
        if (pixels.u)
            __atomic_fetch_add(&pixels.u->refcount, 0, __ATOMIC_RELEASE);
    }
    Loan(const Loan&) = delete;
    Loan& operator=(const Loan&) = delete;

    const cv::Mat pixels;
};

} // namespace

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

std::shared_ptr<const unsigned char> lend(const Image& image)
{
    const auto loan = std::make_shared<const Loan>(image);
    return {loan, loan->pixels.data};
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
