#pragma once

#include "VhciPort.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <deque>

namespace lab {

/// Transfers to the host that wait for data. Thread-safe.
class TransferQueue
{
public:
    void put(const Urb& urb)
    {
        const std::lock_guard lock(mutex_);
        waiting_.push_back(urb);
        changed_.notify_all();
    }

    /// Gives the oldest transfer to `send`, which ends it. False, and nothing sent, when none came within the
    /// limit or when the epoch is over. `send` runs under the lock: a transfer that remove() no longer finds
    /// has been answered, and the host must hear that answer before the one to its unlink.
    template <class Send> bool serve(unsigned epoch, std::chrono::milliseconds limit, Send send)
    {
        std::unique_lock lock(mutex_);
        const bool ready =
            changed_.wait_for(lock, limit, [&] { return epoch != epoch_ || !waiting_.empty(); });
        if (!ready || epoch != epoch_)
            return false;
        const Urb urb = waiting_.front();
        waiting_.pop_front();
        send(urb);
        return true;
    }

    /// True when the transfer was still waiting; it is forgotten.
    bool remove(std::uint32_t sequence)
    {
        const std::lock_guard lock(mutex_);
        const auto found = std::find_if(
            waiting_.begin(), waiting_.end(), [&](const Urb& urb) { return urb.sequence == sequence; });
        if (found == waiting_.end())
            return false;
        waiting_.erase(found);
        return true;
    }

    unsigned epoch() const
    {
        const std::lock_guard lock(mutex_);
        return epoch_;
    }

    /// Begins a new epoch: what was being sent in the old one is broken off.
    void interrupt()
    {
        const std::lock_guard lock(mutex_);
        ++epoch_;
        changed_.notify_all();
    }

private:
    mutable std::mutex mutex_;
    std::condition_variable changed_;
    std::deque<Urb> waiting_;
    unsigned epoch_ = 0;
};

} // namespace lab
