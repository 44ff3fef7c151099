#include "Workers.h"

#include <cstdio>
#include <exception>
#include <system_error>
#include <thread>

bool Workers::start(std::function<void()> job)
{
    {
        const std::lock_guard lock(mutex_);
        ++running_;
    }
    try {
        std::thread([this, job = std::move(job)]() mutable {
            try {
                job();
            } catch (const std::exception& failure) {
                std::fprintf(stderr, "worker: %s\n", failure.what());
            }
            job = nullptr; // what it holds goes before whoever waits may go
            leave();
        }).detach();
    } catch (const std::system_error& failure) {
        std::fprintf(stderr, "worker: no thread (%s)\n", failure.what());
        leave();
        return false;
    }
    return true;
}

void Workers::leave()
{
    // Told under the lock: whoever waits may destroy this object as soon as the lock is free.
    const std::lock_guard lock(mutex_);
    --running_;
    ended_.notify_all();
}

void Workers::finish()
{
    std::unique_lock lock(mutex_);
    ended_.wait(lock, [this] { return running_ == 0; });
}
