#pragma once

#include "FrameGrid.h"
#include "FrameQueue.h"

namespace mirvak {

struct RecordCounts
{
    int written = 0;  ///< frames of the film, repeated ones included
    int repeated = 0; ///< of these the ones for which the camera gave nothing new
    int dropped = 0;  ///< frames of the camera, left out because the encoder was late
};

/// Decides what the film shows in each slot of its time. Knows no thread and no clock: all times are passed
/// in.
///
/// A slot is settled when it is over. It shows the frame that arrived in it, otherwise the last one again;
/// the first frame also stands for the time before it. While the encoder is late, slots without a frame stay
/// empty: the frame before them is shown longer, which costs nothing.
class Schedule
{
public:
    using Time = FrameGrid::Time;

    enum class Task {
        wait,   ///< until the time given, or until a frame comes
        frame,  ///< show the buffer's pixels from the slot on; then give the buffer back
        repeat, ///< show the last frame again
        end,    ///< the film is complete, or has no frame at all
    };
    struct Step
    {
        Task task;
        int64_t slot = 0;
        Time until{0};
        FrameBuffer buffer = nullptr;
    };

    Schedule(int framesPerSecond, size_t frameBytes);

    FrameBuffer emptyBuffer() { return queue_.emptyBuffer(); }
    void giveBack(FrameBuffer buffer) { queue_.giveBack(std::move(buffer)); }
    void push(FrameBuffer buffer, Time arrival);
    /// The film ends at this moment; no push after it.
    void close(Time end);
    Step next(Time now);

    const RecordCounts& counts() const { return counts_; }
    /// How long the film is so far.
    int64_t slots() const { return slot_; }

private:
    Step settle(int64_t over);
    void leaveSlotsEmpty(int64_t over);
    Step show(FrameBuffer buffer);

    FrameGrid grid_;
    FrameQueue queue_;
    RecordCounts counts_;
    int64_t slot_ = 0; ///< the next to be settled
    int64_t end_ = -1; ///< slots of the whole film once it is known
};

} // namespace mirvak
