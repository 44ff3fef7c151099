#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace mirvak {

/// The buffers that a video device and this process share: mapped, queued and taken back.
class V4l2Buffers
{
public:
    struct Filled
    {
        unsigned index;
        size_t byteCount;
        bool damaged; ///< the driver marked the frame as broken
    };
    enum class Take { Buffer, NoneYet, Failed };

    V4l2Buffers() = default;
    ~V4l2Buffers() { unmap(); }
    V4l2Buffers(const V4l2Buffers&) = delete;
    V4l2Buffers& operator=(const V4l2Buffers&) = delete;

    /// Asks the driver for `count` buffers, maps and queues them. The name of the failed call, with errno, or
    /// null.
    const char* create(int fd, unsigned count);
    /// Unmaps the buffers and lets the driver free them. The stream must be off.
    void release(int fd);

    size_t count() const { return mapped_.size(); }
    const uint8_t* data(unsigned index) const { return static_cast<const uint8_t*>(mapped_[index].start); }

    bool queue(int fd, unsigned index) const;
    /// Takes the next filled buffer out of the driver's queue without waiting.
    Take dequeue(int fd, Filled& filled) const;

private:
    struct Mapped
    {
        void* start;
        size_t length;
    };
    void unmap();

    std::vector<Mapped> mapped_;
};

} // namespace mirvak
