#include "ImagePool.h"

#include <algorithm>

namespace mirvak {

std::unique_ptr<Image> ImagePool::take(int width, int height)
{
    std::unique_ptr<Image> image;
    {
        const std::lock_guard lock(mutex_);
        const auto fits = std::find_if(kept_.begin(), kept_.end(), [&](const auto& kept) {
            return kept->pixels.cols == width && kept->pixels.rows == height;
        });
        if (fits != kept_.end()) {
            image = std::move(*fits);
            kept_.erase(fits);
        }
    }
    if (!image)
        image = std::make_unique<Image>();
    image->pixels.create(height, width, CV_8UC3);
    image->dpi = cameraDpi;
    return image;
}

void ImagePool::giveBack(std::unique_ptr<Image> image)
{
    // A picture whose pixels somebody else still shows must not be written again.
    const bool shared = image->pixels.u && image->pixels.u->refcount > 1;
    if (shared || image->pixels.empty())
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
