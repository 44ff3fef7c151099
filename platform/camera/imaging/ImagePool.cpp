#include "ImagePool.h"

#include "SharedPixels.h"

#include <algorithm>

namespace mirvak {

namespace {

// A picture whose pixels somebody else still shows must not be written again.
bool isFree(const Image& image)
{
    return !isShared(image.pixels) && !isShared(image.spare);
}

} // namespace

std::unique_ptr<Image> ImagePool::take(int width, int height)
{
    const cv::Size size(width, height);
    std::unique_ptr<Image> image;
    {
        const std::lock_guard lock(mutex_);
        const auto fits = std::find_if(kept_.begin(), kept_.end(), [&](const auto& kept) {
            return (kept->pixels.size() == size || kept->spare.size() == size) && isFree(*kept);
        });
        if (fits != kept_.end()) {
            image = std::move(*fits);
            kept_.erase(fits);
        }
    }
    if (!image)
        image = std::make_unique<Image>();
    // After a quarter turn the picture lies in what was the spare buffer.
    if (image->pixels.size() != size)
        std::swap(image->pixels, image->spare);
    image->pixels.create(height, width, CV_8UC3);
    image->dpi = cameraDpi;
    image->taken.reset();
    return image;
}

void ImagePool::giveBack(std::unique_ptr<Image> image)
{
    if (isFree(*image))
        giveBackShown(std::move(image));
}

void ImagePool::giveBackShown(std::unique_ptr<Image> image)
{
    if (image->pixels.empty())
        return;
    const std::lock_guard lock(mutex_);
    if (kept_.size() == keptAtMost)
        kept_.erase(kept_.begin());
    kept_.push_back(std::move(image));
}

void ImagePool::clear()
{
    const std::lock_guard lock(mutex_);
    kept_.clear();
}

} // namespace mirvak
