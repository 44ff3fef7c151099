#pragma once

#include "Image.h"

#include <memory>
#include <mutex>
#include <vector>

namespace mirvak {

/// Keeps the buffers of released images for the next ones of the same size, so that a running stream
/// allocates no pixels. Thread-safe.
class ImagePool
{
public:
    /// An image of width x height pixels with undefined contents.
    std::unique_ptr<Image> take(int width, int height);
    /// Keeps the image for reuse, or frees it when enough are kept already.
    void giveBack(std::unique_ptr<Image> image);
    /// Frees what is kept.
    void clear();

private:
    static constexpr size_t keptAtMost = 4;
    std::mutex mutex_;
    std::vector<std::unique_ptr<Image>> kept_;
};

} // namespace mirvak
