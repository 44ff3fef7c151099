#pragma once

#include <QImage>

#include <memory>
#include <vector>

/// RGB pixels for the preview that are used again as soon as nobody shows them. A picture made of a buffer
/// keeps it alive for as long as any copy of the picture lives, so a slow view never sees it change. Used by
/// one thread; the pictures may be dropped by any thread.
class PreviewBuffers
{
public:
    using Buffer = std::shared_ptr<std::vector<uchar>>;

    /// A buffer of exactly `bytes` bytes that no picture uses, with undefined contents.
    Buffer take(size_t bytes);

    /// width x height pixels, 24 bits, red green blue, rows without padding; shares the buffer.
    static QImage wrap(const Buffer& buffer, int width, int height);

private:
    // One that is filled, one that is painted, one that waits to be painted.
    static constexpr size_t keptAtMost = 4;
    std::vector<Buffer> buffers_;
};
