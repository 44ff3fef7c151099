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
    /// Keeps the image for reuse, in place of the oldest when enough are kept already. One whose pixels
    /// somebody else holds too is not kept.
    void giveBack(std::unique_ptr<Image> image);
    /// The same for the original of what is shown: it waits here until the others have let go.
    void giveBackShown(std::unique_ptr<Image> image);
    /// Frees what is kept.
    void clear();

private:
    static constexpr size_t keptAtMost = 6; // one is painted, one waits to be painted, four are free
    std::mutex mutex_;
    std::vector<std::unique_ptr<Image>> kept_;
};

} // namespace mirvak
