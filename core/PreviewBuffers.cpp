#include "PreviewBuffers.h"

#include <algorithm>

namespace {

void dropBuffer(void* owner)
{
    delete static_cast<PreviewBuffers::Buffer*>(owner);
}

} // namespace

PreviewBuffers::Buffer PreviewBuffers::take(size_t bytes)
{
    const auto unused = std::find_if(
        buffers_.begin(), buffers_.end(), [](const Buffer& buffer) { return buffer.use_count() == 1; });
    if (unused != buffers_.end()) {
        (*unused)->resize(bytes);
        return *unused;
    }
    Buffer fresh = std::make_shared<std::vector<uchar>>(bytes);
    if (buffers_.size() < keptAtMost)
        buffers_.push_back(fresh);
    return fresh;
}

QImage PreviewBuffers::wrap(const Buffer& buffer, int width, int height)
{
    const uchar* pixels = buffer->data();
    return QImage(pixels, width, height, width * 3, QImage::Format_RGB888, dropBuffer, new Buffer(buffer));
}
