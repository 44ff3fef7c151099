#pragma once

#include <atomic>
#include <chrono>
#include <future>
#include <string>

namespace mirvak {

/// Makes plain files of finished recordings, one at a time, on a thread of its own. One thread uses it.
class PlainCopyThread
{
public:
    PlainCopyThread() = default;
    ~PlainCopyThread() { settle(); }
    PlainCopyThread(const PlainCopyThread&) = delete;
    PlainCopyThread& operator=(const PlainCopyThread&) = delete;

    /// Begins with this file and waits a little, so that a short recording is final at once.
    void start(const std::string& path, std::chrono::milliseconds wait);
    /// Waits until nothing runs any more. A long copy is given up: its file plays as it is.
    void settle();

private:
    std::atomic<bool> cancelled_{false};
    std::future<void> running_;
};

} // namespace mirvak
