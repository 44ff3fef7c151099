#pragma once

#include <QImage>

#include <memory>
#include <mutex>
#include <vector>

/// RGB pixels for the preview that are used again as soon as nobody shows them. A picture made of a buffer
/// keeps it for as long as any copy of the picture lives, so a slow view never sees it change, and gives it
/// back afterwards, also after this object is gone. The first frames of a size make all buffers that a slow
/// view will ever need, so that the memory of a long preview does not grow later. Thread-safe.
class PreviewBuffers
{
    struct Shelf;

public:
    /// Pixels that nobody else uses.
    struct Buffer
    {
        std::vector<uchar> pixels;
        std::shared_ptr<Shelf> home; // null while the buffer lies on the shelf
    };

    PreviewBuffers();

    /// A buffer of `bytes` bytes with undefined contents.
    std::unique_ptr<Buffer> take(size_t bytes);

    /// width x height pixels, 24 bits, red green blue, rows without padding, in the buffer.
    static QImage wrap(std::unique_ptr<Buffer> buffer, int width, int height);

private:
    struct Shelf
    {
        std::mutex mutex;
        size_t bytes = 0; // of each buffer
        size_t made = 0;  // lent and lying here
        std::vector<std::unique_ptr<Buffer>> buffers;
    };
    static void giveBack(void* buffer);

    std::shared_ptr<Shelf> shelf_;
};
