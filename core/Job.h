#pragma once

#include <atomic>

/// How far a long piece of work has come, and whether it is still wanted. Shared by whoever does it, which
/// tells and asks, and whoever shows it to the user. Thread-safe.
class Job
{
public:
    /// 0 to 1. It never goes back: what lies behind is ignored.
    void reach(double progress);
    /// The same for work that is counted, which begins at `from`: so many of `count` are done.
    void reach(int done, int count, double from = 0);
    double progress() const { return progress_; }
    int done() const { return done_; }
    int count() const { return count_; } ///< 0: it is not counted

    /// Asks for the end, for good. The work may be done all the same.
    void stop() { stopped_ = true; }
    bool isStopped() const { return stopped_; }

private:
    std::atomic<double> progress_{0};
    std::atomic<int> done_{0}, count_{0};
    std::atomic<bool> stopped_{false};
};
