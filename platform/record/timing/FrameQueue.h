#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <vector>

namespace mirvak {

/// The pixels of one frame. Its memory is not touched before it is filled.
using FrameBuffer = std::unique_ptr<uint8_t[]>;

/// Frames that wait for the encoder, in the order of their slots: never more than the capacity. Buffers are
/// used again and allocated only as the need grows.
class FrameQueue
{
public:
    FrameQueue(size_t frameBytes, size_t capacity);

    size_t size() const { return waiting_.size(); }
    bool isEmpty() const { return waiting_.empty(); }
    /// More than half full: the encoder is late.
    bool isCrowded() const { return waiting_.size() > capacity_ / 2; }
    int64_t firstSlot() const { return waiting_.front().slot; } ///< not when empty

    FrameBuffer emptyBuffer(); ///< for one frame; throws std::bad_alloc
    void giveBack(FrameBuffer buffer);

    /// `slot` is not before that of the last push. When the queue is full, the frame goes whose loss leaves
    /// the smallest gap, so that a late encoder thins the film out evenly.
    /// @return whether a slot lost its only frame by that
    bool push(FrameBuffer buffer, int64_t slot);
    /// The frame to show in `slot`; null when none has arrived until then. Of several the last two count: the
    /// older is shown and the newer is kept for the next slot. So a camera whose frames arrive close to the
    /// slots' borders, now before and now after them, loses and repeats none. A faster camera's surplus goes.
    FrameBuffer popFor(int64_t slot);
    FrameBuffer popFirst(); ///< not when empty

private:
    struct Waiting
    {
        FrameBuffer buffer;
        int64_t slot;
    };

    int64_t gapWithout(size_t index) const;
    void dropFirst();

    size_t frameBytes_;
    size_t capacity_;
    std::deque<Waiting> waiting_;
    std::vector<FrameBuffer> empty_;
    int64_t lastTaken_ = -1; ///< slot of the frame that left last
};

} // namespace mirvak
