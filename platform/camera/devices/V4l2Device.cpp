#include "V4l2Device.h"

#include "V4l2Ioctl.h"
#include "V4l2Modes.h"

#include <linux/videodev2.h>
#include <poll.h>

#include <algorithm>
#include <cmath>

namespace mirvak {
namespace {

// One is being decoded, one waits, and the driver always has two to fill.
constexpr unsigned bufferCount = 4;
constexpr int bufferType = V4L2_BUF_TYPE_VIDEO_CAPTURE;

MirvakResult resultOf(int error)
{
    switch (error) {
    case EBUSY:
        return MIRVAK_BUSY;
    case ENODEV:
    case ENXIO:
        return MIRVAK_NO_DEVICE;
    case ENOMEM:
        return MIRVAK_NO_MEMORY;
    default:
        return MIRVAK_IO_ERROR;
    }
}

} // namespace

V4l2Device::V4l2Device(std::string path, UniqueFd fd, std::vector<CameraMode> modes)
    : path_(std::move(path)), fd_(std::move(fd)), modes_(std::move(modes))
{
}

V4l2Device::~V4l2Device()
{
    V4l2Device::stop();
}

MirvakResult V4l2Device::fail(const char* call) const
{
    const MirvakResult result = resultOf(errno);
    complain(path_.c_str(), call);
    return result;
}

MirvakResult V4l2Device::setMode(const CameraMode& mode)
{
    v4l2_format format{};
    format.type = bufferType;
    format.fmt.pix.width = static_cast<uint32_t>(mode.width);
    format.fmt.pix.height = static_cast<uint32_t>(mode.height);
    format.fmt.pix.pixelformat = fourccOf(mode.format);
    format.fmt.pix.field = V4L2_FIELD_NONE;
    if (videoIoctl(fd_.get(), VIDIOC_S_FMT, &format) != 0)
        return fail("VIDIOC_S_FMT");
    const v4l2_pix_format& set = format.fmt.pix;
    if (set.pixelformat != fourccOf(mode.format)) {
        errno = EINVAL;
        return fail("VIDIOC_S_FMT");
    }
    layout_ = {
        mode.format, static_cast<int>(set.width), static_cast<int>(set.height), set.bytesperline, nullptr, 0};
    chooseHighestRate(fd_.get(), mode);
    return MIRVAK_OK;
}

MirvakResult V4l2Device::start(const CameraMode& mode, int waiting)
{
    stop();
    const MirvakResult result = setMode(mode);
    if (result != MIRVAK_OK)
        return result;
    waiting_ = static_cast<size_t>(std::clamp(waiting, 1, static_cast<int>(VIDEO_MAX_FRAME) - 3));
    int type = bufferType;
    const char* failed =
        buffers_.create(fd_.get(), std::max(bufferCount, static_cast<unsigned>(waiting_) + 3));
    if (!failed && videoIoctl(fd_.get(), VIDIOC_STREAMON, &type) != 0)
        failed = "VIDIOC_STREAMON";
    if (failed) {
        const MirvakResult why = fail(failed);
        buffers_.release(fd_.get());
        return why;
    }
    streaming_ = true;
    return MIRVAK_OK;
}

void V4l2Device::stop()
{
    if (!streaming_)
        return;
    streaming_ = false;
    int type = bufferType;
    videoIoctl(fd_.get(), VIDIOC_STREAMOFF, &type); // fails for a device that is gone: it streams no more
    buffers_.release(fd_.get());
    filled_.clear();
    lent_ = -1;
}

ReadStatus V4l2Device::read(RawFrame& frame, std::chrono::milliseconds timeout, const WakeEvent& stop)
{
    giveBack();
    const auto limit = WakeEvent::Clock::now() + timeout;
    while (true) {
        switch (waitForBuffer(limit, stop)) {
        case Poll::Stopped:
            return ReadStatus::Stopped;
        case Poll::TimedOut:
            return ReadStatus::TimedOut;
        case Poll::Gone:
            return ReadStatus::Gone;
        case Poll::Ready:
            break;
        }
        if (!collect())
            return ReadStatus::Gone;
        dropStale();
        if (!filled_.empty())
            break;
        if (std::exchange(sawDamage_, false))
            return ReadStatus::Damaged;
    }
    sawDamage_ = false;
    describe(filled_.front(), frame);
    filled_.pop_front();
    return ReadStatus::Frame;
}

V4l2Device::Poll V4l2Device::waitForBuffer(WakeEvent::Clock::time_point limit, const WakeEvent& stop) const
{
    pollfd entries[] = {{fd_.get(), POLLIN, 0}, {stop.fd(), POLLIN, 0}};
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(limit - WakeEvent::Clock::now()).count();
    const int wait = filled_.empty() ? static_cast<int>(std::max<decltype(left)>(left, 0)) : 0;
    int ready = 0;
    do {
        ready = poll(entries, 2, wait);
    } while (ready < 0 && errno == EINTR);
    if (ready < 0)
        return Poll::Gone;
    if (entries[1].revents != 0)
        return Poll::Stopped;
    if (entries[0].revents & POLLIN || !filled_.empty())
        return Poll::Ready;
    if (entries[0].revents != 0)
        return Poll::Gone; // POLLERR, POLLHUP: unplugged
    return Poll::TimedOut;
}

bool V4l2Device::collect()
{
    V4l2Buffers::Filled buffer{};
    while (true) {
        switch (buffers_.dequeue(fd_.get(), buffer)) {
        case V4l2Buffers::Take::NoneYet:
            return true;
        case V4l2Buffers::Take::Failed:
            complain(path_.c_str(), "VIDIOC_DQBUF");
            return false;
        case V4l2Buffers::Take::Buffer:
            break;
        }
        if (buffer.damaged) {
            sawDamage_ = true;
            requeue(buffer.index);
            return true; // or a dead device could keep this loop busy
        }
        filled_.push_back(buffer);
    }
}

void V4l2Device::dropStale()
{
    // With every buffer full the driver has had to drop what came later: even the newest one is old.
    const bool allOld = waiting_ == 1 && filled_.size() == buffers_.count();
    const size_t keep = allOld ? 0 : waiting_;
    while (filled_.size() > keep) {
        requeue(filled_.front().index);
        filled_.pop_front();
    }
}

void V4l2Device::requeue(unsigned index)
{
    // Fails only for a device that is gone; the next poll tells.
    buffers_.queue(fd_.get(), index);
}

void V4l2Device::describe(const V4l2Buffers::Filled& buffer, RawFrame& frame)
{
    frame = layout_;
    frame.data = buffers_.data(buffer.index);
    frame.size = buffer.byteCount;
    lent_ = static_cast<int>(buffer.index);
}

void V4l2Device::giveBack()
{
    if (lent_ >= 0)
        requeue(static_cast<unsigned>(std::exchange(lent_, -1)));
}

bool V4l2Device::setZoom(double factor)
{
    v4l2_queryctrl range{};
    range.id = V4L2_CID_ZOOM_ABSOLUTE;
    if (videoIoctl(fd_.get(), VIDIOC_QUERYCTRL, &range) != 0 || range.flags & V4L2_CTRL_FLAG_DISABLED)
        return false;
    // Counted from 0 the numbers are no focal lengths, and a narrow range cannot reach the factor.
    const long value = std::lround(range.minimum * factor);
    if (range.minimum <= 0 || value > range.maximum)
        return false;
    v4l2_control control{};
    control.id = range.id;
    control.value = static_cast<int>(value);
    return videoIoctl(fd_.get(), VIDIOC_S_CTRL, &control) == 0;
}

} // namespace mirvak
