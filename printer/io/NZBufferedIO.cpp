#include "NZBufferedIO.h"

// A chunk is never larger than the buffer, which is empty when one is fetched: it never has to wait for room.
NZBufferedIO::NZBufferedIO(std::size_t capacity, std::size_t chunk)
    : ring_(capacity), chunk_(std::clamp<std::size_t>(chunk, 1, ring_.room()))
{
}

int NZBufferedIO::BaseRead(std::uint8_t* buf, std::size_t len, std::size_t timeoutMs)
{
    const TimeLimit limit = startLimit(timeoutMs);
    std::size_t done = 0;
    while (done < len) {
        if (!ring_.isEmpty())
            buf[done++] = ring_.take();
        else if (!IsOpened() || limit.isOver())
            break;
        else if (!refill(timeoutMs))
            return nzio::notRead;
    }
    return static_cast<int>(done);
}

bool NZBufferedIO::refill(std::size_t timeoutMs)
{
    const int count = BaseReadAvailable(chunk_.data(), chunk_.size(), timeoutMs);
    for (int i = 0; i < count; ++i)
        ring_.put(chunk_[static_cast<std::size_t>(i)]);
    return count >= 0;
}
