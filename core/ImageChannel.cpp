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
    if (!requested_ || closed_)
        return;
    const auto wanted = static_cast<size_t>(waiting_);
    if (wanted > 0 && frames_.size() >= wanted)
        return;
    FrameHandle copy = ownImage(camera_, camera_.MirvakImage_Clone(image));
    if (!copy)
        return;
    if (wanted == 0)
        frames_.clear(); // left over from a request that timed out: only the newest may stay
    frames_.push_back(std::move(copy));
    arrived_.notify_one();
}

FrameHandle ImageChannel::take(std::chrono::milliseconds timeout, const std::function<bool()>& meanwhile)
{
    const Time deadline = std::chrono::steady_clock::now() + timeout;
    Lock lock(mutex_);
    if (waiting_ == 0)
        frames_.clear(); // a frame that answered an older request shows an older page
    requested_ = true;
    ++waiting_;
    const bool isWanted = await(lock, deadline, meanwhile);
    --waiting_;
    if (isWanted)
        return handOver();
    if (waiting_ == 0)
        frames_.clear();
    return ownImage(camera_, nullptr);
}

/// False when the request was given up.
bool ImageChannel::await(Lock& lock, Time deadline, const std::function<bool()>& meanwhile)
{
    for (Time now; !isSettled() && (now = std::chrono::steady_clock::now()) < deadline;) {
        arrived_.wait_until(lock, meanwhile ? std::min(now + pulse, deadline) : deadline);
        if (!meanwhile || isSettled())
            continue;
        lock.unlock();
        const bool goesOn = meanwhile();
        lock.lock();
        if (!goesOn)
            return false;
    }
    return true;
}

FrameHandle ImageChannel::handOver()
{
    if (frames_.empty()) {
        if (!isSettled())
            std::fputs("Get image timeout!\n", stderr);
        return ownImage(camera_, nullptr);
    }
    FrameHandle frame = std::move(frames_.front());
    frames_.pop_front();
    if (waiting_ == 0) {
        requested_ = false;
        frames_.clear();
    }
    return frame;
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
    frames_.clear();
    arrived_.notify_all();
}

bool ImageChannel::isRequested() const
{
    const std::lock_guard lock(mutex_);
    return requested_;
}
