#include "FrameQueue.h"

#include <gtest/gtest.h>

#include <set>

using mirvak::FrameBuffer;
using mirvak::FrameQueue;

namespace {

constexpr size_t capacity = 8;

struct Numbered
{
    FrameQueue queue{sizeof(int), capacity};
    std::set<const void*> buffers; ///< all that were ever handed out

    bool push(int number, int64_t slot)
    {
        FrameBuffer buffer = queue.emptyBuffer();
        buffers.insert(buffer.get());
        *reinterpret_cast<int*>(buffer.get()) = number;
        return queue.push(std::move(buffer), slot);
    }
    int popFor(int64_t slot)
    {
        FrameBuffer buffer = queue.popFor(slot);
        if (!buffer)
            return -1;
        const int number = *reinterpret_cast<int*>(buffer.get());
        queue.giveBack(std::move(buffer));
        return number;
    }
};

TEST(FrameQueue, LosesFramesEvenlyWhenTheEncoderStandsStill)
{
    Numbered frames;
    int lost = 0;
    for (int i = 0; i < 100; ++i) {
        lost += frames.push(i, i);
        ASSERT_LE(frames.queue.size(), capacity);
    }
    EXPECT_EQ(lost, 92);
    EXPECT_LE(frames.buffers.size(), capacity + 1) << "memory grows with the time of the stall";
    int last = -1, widest = 0;
    for (int slot = 0; !frames.queue.isEmpty(); ++slot) {
        if (const int number = frames.popFor(slot); number >= 0) {
            widest = std::max(widest, number - last);
            last = number;
        }
    }
    EXPECT_EQ(last, 99) << "the newest frame is lost";
    EXPECT_LE(widest, 26) << "twice the even share of 100 / 8: halving knows powers of two only";
}

TEST(FrameQueue, AFrameOfWhichTheSlotHasAnotherIsNoLoss)
{
    Numbered frames;
    int lost = 0;
    for (int i = 0; i < 16; ++i) // two a slot
        lost += frames.push(i, i / 2);
    EXPECT_EQ(lost, 0);
    EXPECT_EQ(frames.queue.size(), capacity);
}

TEST(FrameQueue, KeepsOneFrameForTheNextSlot)
{
    Numbered frames;
    frames.push(0, 0);
    frames.push(1, 0);
    EXPECT_EQ(frames.popFor(0), 0);
    EXPECT_EQ(frames.popFor(1), 1) << "the camera's second frame came a moment too early";
    EXPECT_EQ(frames.popFor(2), -1);
    for (int i = 2; i < 6; ++i)
        frames.push(i, 3);
    EXPECT_EQ(frames.popFor(2), -1) << "not before its time";
    EXPECT_EQ(frames.popFor(3), 4) << "the surplus goes, the last but one is shown";
    EXPECT_EQ(frames.popFor(4), 5);
}

} // namespace
