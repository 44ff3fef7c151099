#include "Schedule.h"

#include <algorithm>

namespace mirvak {

namespace {

// A quarter of a second of a camera's frames: longer stalls of the disk thin the film out.
constexpr size_t framesWaiting = 8;

} // namespace

Schedule::Schedule(int framesPerSecond, size_t frameBytes)
    : grid_(framesPerSecond), queue_(frameBytes, framesWaiting)
{
}

void Schedule::push(FrameBuffer buffer, Time arrival)
{
    if (queue_.push(std::move(buffer), grid_.slotAt(arrival)))
        ++counts_.dropped;
}

void Schedule::close(Time end)
{
    end_ = grid_.slotsIn(end);
}

Schedule::Step Schedule::next(Time now)
{
    const bool isClosed = end_ >= 0;
    const int64_t over = isClosed ? end_ : grid_.slotAt(now);
    const bool hasPicture = counts_.written > 0 || !queue_.isEmpty();
    if (slot_ < over && hasPicture)
        return settle(over);
    if (isClosed)
        return {Task::end};
    return {Task::wait, 0, grid_.endOf(over)};
}

Schedule::Step Schedule::settle(int64_t over)
{
    if (counts_.written == 0)
        return show(queue_.popFirst());
    leaveSlotsEmpty(over);
    if (FrameBuffer buffer = queue_.popFor(slot_))
        return show(std::move(buffer));
    ++counts_.repeated;
    return show(nullptr);
}

// To repeat a frame takes the encoder a fraction of a new one, so that it catches up with a second's worth
// unless new frames press.
void Schedule::leaveSlotsEmpty(int64_t over)
{
    const int64_t latest = queue_.isEmpty() ? over : std::min(over, queue_.firstSlot());
    if (queue_.isCrowded())
        slot_ = std::max(slot_, std::min(latest, over - 1));
    slot_ = std::max(slot_, std::min(latest, over - grid_.slotsPerSecond()));
}

Schedule::Step Schedule::show(FrameBuffer buffer)
{
    ++counts_.written;
    const Task task = buffer ? Task::frame : Task::repeat;
    return {task, slot_++, Time(0), std::move(buffer)};
}

} // namespace mirvak
