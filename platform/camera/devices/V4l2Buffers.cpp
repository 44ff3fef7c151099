#include "V4l2Buffers.h"

#include "V4l2Ioctl.h"

#include <linux/videodev2.h>
#include <sys/mman.h>

#include <algorithm>

namespace mirvak {
namespace {

v4l2_buffer captureBuffer(unsigned index)
{
    v4l2_buffer buffer{};
    buffer.type = V4L2_BUF_TYPE_VIDEO_CAPTURE;
    buffer.memory = V4L2_MEMORY_MMAP;
    buffer.index = index;
    return buffer;
}

int request(int fd, unsigned& count)
{
    v4l2_requestbuffers buffers{};
    buffers.type = V4L2_BUF_TYPE_VIDEO_CAPTURE;
    buffers.memory = V4L2_MEMORY_MMAP;
    buffers.count = count;
    const int result = videoIoctl(fd, VIDIOC_REQBUFS, &buffers);
    count = buffers.count;
    return result;
}

} // namespace

const char* V4l2Buffers::create(int fd, unsigned count)
{
    if (request(fd, count) != 0)
        return "VIDIOC_REQBUFS";
    for (unsigned i = 0; i < count; ++i) {
        v4l2_buffer buffer = captureBuffer(i);
        if (videoIoctl(fd, VIDIOC_QUERYBUF, &buffer) != 0)
            return "VIDIOC_QUERYBUF";
        void* start = mmap(nullptr, buffer.length, PROT_READ | PROT_WRITE, MAP_SHARED, fd, buffer.m.offset);
        if (start == MAP_FAILED)
            return "mmap";
        mapped_.push_back({start, buffer.length});
        if (!queue(fd, i))
            return "VIDIOC_QBUF";
    }
    return nullptr;
}

void V4l2Buffers::release(int fd)
{
    unmap();
    unsigned none = 0;
    request(fd, none); // fails only for a device that is gone, and then nothing is left to free
}

void V4l2Buffers::unmap()
{
    for (const Mapped& buffer : mapped_)
        munmap(buffer.start, buffer.length);
    mapped_.clear();
}

bool V4l2Buffers::queue(int fd, unsigned index) const
{
    v4l2_buffer buffer = captureBuffer(index);
    return videoIoctl(fd, VIDIOC_QBUF, &buffer) == 0;
}

V4l2Buffers::Take V4l2Buffers::dequeue(int fd, Filled& filled) const
{
    v4l2_buffer buffer = captureBuffer(0);
    if (videoIoctl(fd, VIDIOC_DQBUF, &buffer) != 0)
        return errno == EAGAIN ? Take::NoneYet : Take::Failed;
    if (buffer.index >= mapped_.size()) {
        errno = EIO;
        return Take::Failed;
    }
    filled.index = buffer.index;
    filled.byteCount = std::min<size_t>(buffer.bytesused, mapped_[buffer.index].length);
    filled.damaged = (buffer.flags & V4L2_BUF_FLAG_ERROR) || buffer.bytesused == 0;
    return Take::Buffer;
}

} // namespace mirvak
