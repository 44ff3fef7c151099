#include "PreviewBuffers.h"

namespace {

// One that is filled, one that is painted, one that waits to be painted.
constexpr size_t keptAtMost = 3;

} // namespace

PreviewBuffers::PreviewBuffers() : shelf_(std::make_shared<Shelf>()) {}

std::unique_ptr<PreviewBuffers::Buffer> PreviewBuffers::take(size_t bytes)
{
    std::unique_ptr<Buffer> buffer;
    std::vector<std::unique_ptr<Buffer>> outgrown; // freed after unlocking
    {
        const std::lock_guard lock(shelf_->mutex);
        if (shelf_->bytes != bytes) {
            outgrown.swap(shelf_->buffers);
            shelf_->bytes = bytes;
            shelf_->made = 0;
        }
        if (shelf_->made < keptAtMost || shelf_->buffers.empty()) {
            ++shelf_->made;
        } else {
            buffer = std::move(shelf_->buffers.back());
            shelf_->buffers.pop_back();
        }
    }
    if (!buffer)
        buffer = std::make_unique<Buffer>();
    buffer->pixels.resize(bytes);
    buffer->home = shelf_;
    return buffer;
}

QImage PreviewBuffers::wrap(std::unique_ptr<Buffer> buffer, int width, int height)
{
    const uchar* pixels = buffer->pixels.data();
    return QImage(pixels, width, height, width * 3, QImage::Format_RGB888, giveBack, buffer.release());
}

void PreviewBuffers::giveBack(void* buffer)
{
    std::unique_ptr<Buffer> returned(static_cast<Buffer*>(buffer));
    const std::shared_ptr<Shelf> shelf = std::move(returned->home);
    const std::lock_guard lock(shelf->mutex);
    if (returned->pixels.size() != shelf->bytes)
        return;
    if (shelf->made > keptAtMost)
        --shelf->made;
    else
        shelf->buffers.push_back(std::move(returned));
}
