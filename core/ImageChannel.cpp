#include "ImageChannel.h"

#include "mirvakcamera.h"

#include <algorithm>
#include <cstdio>

namespace {

constexpr std::chrono::milliseconds pulse(20);

} // namespace

void ImageChannel::offer(void* image)
{
    const std::lock_guard lock(mutex_);
    ended_ = false;
    if (!requested_ || closed_ || (waiting_ > 0 && unanswered_.empty()))
        return;
    FrameHandle copy = ownImage(camera_, camera_.MirvakImage_Clone(image));
    if (!copy)
        return;
    if (unanswered_.empty()) {
        leftOver_ = std::move(copy);
        return;
    }
    *unanswered_.front() = std::move(copy);
    unanswered_.pop_front();
    arrived_.notify_all();
}

FrameHandle ImageChannel::take(std::chrono::milliseconds timeout, const std::function<bool()>& meanwhile)
{
    const Time deadline = std::chrono::steady_clock::now() + timeout;
    Lock lock(mutex_);
    leftOver_.reset(); // it shows an older page
    requested_ = true;
    ++waiting_;
    FrameHandle frame = ownImage(camera_, nullptr);
    unanswered_.push_back(&frame);
    const bool isWanted = await(lock, frame, deadline, meanwhile);
    --waiting_;
    unanswered_.erase(std::remove(unanswered_.begin(), unanswered_.end(), &frame), unanswered_.end());
    if (!isWanted)
        frame.reset();
    else if (!isSettled(frame))
        std::fputs("Get image timeout!\n", stderr);
    requested_ = requested_ && (!frame || waiting_ > 0);
    return frame;
}

/// False when the request was given up.
bool ImageChannel::await(Lock& lock,
                         const FrameHandle& frame,
                         Time deadline,
                         const std::function<bool()>& meanwhile)
{
    for (Time now; !isSettled(frame) && (now = std::chrono::steady_clock::now()) < deadline;) {
        arrived_.wait_until(lock, meanwhile ? std::min(now + pulse, deadline) : deadline);
        if (!meanwhile || isSettled(frame))
            continue;
        lock.unlock();
        const bool goesOn = meanwhile();
        lock.lock();
        if (!goesOn)
            return false;
    }
    return true;
}

void ImageChannel::interrupt()
{
    const std::lock_guard lock(mutex_);
    ended_ = true;
    arrived_.notify_all();
}

void ImageChannel::resume()
{
    const std::lock_guard lock(mutex_);
    ended_ = false;
}

void ImageChannel::close()
{
    const std::lock_guard lock(mutex_);
    closed_ = true;
    leftOver_.reset();
    arrived_.notify_all();
}

bool ImageChannel::isRequested() const
{
    const std::lock_guard lock(mutex_);
    return requested_;
}
