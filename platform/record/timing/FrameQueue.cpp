#include "FrameQueue.h"

#include <algorithm>

namespace mirvak {

FrameQueue::FrameQueue(size_t frameBytes, size_t capacity) : frameBytes_(frameBytes), capacity_(capacity)
{
    empty_.reserve(capacity + 4); // giving back must not fail: one being filled, three elsewhere
}

FrameBuffer FrameQueue::emptyBuffer()
{
    if (empty_.empty())
        return FrameBuffer(new uint8_t[frameBytes_]);
    FrameBuffer buffer = std::move(empty_.back());
    empty_.pop_back();
    return buffer;
}

void FrameQueue::giveBack(FrameBuffer buffer)
{
    empty_.push_back(std::move(buffer));
}

bool FrameQueue::push(FrameBuffer buffer, int64_t slot)
{
    waiting_.push_back({std::move(buffer), slot});
    if (waiting_.size() <= capacity_)
        return false;
    size_t least = 0;
    for (size_t i = 1; i + 1 < waiting_.size(); ++i) { // the newest stays
        if (gapWithout(i) < gapWithout(least))
            least = i;
    }
    const bool isLoss = waiting_[least].slot != waiting_[least + 1].slot &&
                        (least == 0 || waiting_[least].slot != waiting_[least - 1].slot);
    giveBack(std::move(waiting_[least].buffer));
    waiting_.erase(waiting_.begin() + static_cast<std::ptrdiff_t>(least));
    return isLoss;
}

int64_t FrameQueue::gapWithout(size_t index) const
{
    return waiting_[index + 1].slot - (index == 0 ? lastTaken_ : waiting_[index - 1].slot);
}

FrameBuffer FrameQueue::popFor(int64_t slot)
{
    if (isEmpty() || firstSlot() > slot)
        return nullptr;
    while (waiting_.size() > 2 && waiting_[2].slot <= slot)
        dropFirst();
    return popFirst();
}

FrameBuffer FrameQueue::popFirst()
{
    FrameBuffer buffer = std::move(waiting_.front().buffer);
    lastTaken_ = waiting_.front().slot;
    waiting_.pop_front();
    return buffer;
}

void FrameQueue::dropFirst()
{
    giveBack(popFirst());
}

} // namespace mirvak
