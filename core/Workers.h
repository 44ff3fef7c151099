#pragma once

#include <condition_variable>
#include <functional>
#include <mutex>

/// Short jobs on threads of their own that never outlive what they use: the end of this object waits for
/// them. Declare it after everything that the jobs touch. Thread-safe.
class Workers
{
public:
    Workers() = default;
    ~Workers() { finish(); }
    Workers(const Workers&) = delete;
    Workers& operator=(const Workers&) = delete;

    /// Starts `job` on a thread of its own. False when the system gives no thread; the job has not run then.
    bool start(std::function<void()> job);
    /// Returns when no job runs any more.
    void finish();

private:
    void leave();

    std::mutex mutex_;
    std::condition_variable ended_;
    int running_ = 0;
};
