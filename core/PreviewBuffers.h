#pragma once

#include <QImage>

#include <memory>
#include <mutex>
#include <vector>

/// RGB pixels for the preview that are used again as soon as nobody shows them. A picture made of a buffer
/// keeps it for as long as any copy of the picture lives, so a slow view never sees it change, and gives it
/// back afterwards, also after this object is gone. Thread-safe.
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
        std::vector<std::unique_ptr<Buffer>> buffers;
    };
    static void giveBack(void* buffer);

    std::shared_ptr<Shelf> shelf_;
};
