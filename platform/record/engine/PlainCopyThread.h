#pragma once

#include "PlainCopy.h"
#include "UniqueFd.h"

#include <atomic>
#include <chrono>
#include <future>
#include <memory>
#include <mutex>
#include <string>

namespace mirvak {

/// Makes plain files of finished recordings, one after the other, on threads of their own. A disk that does
/// not answer holds up nobody: a thread that is not waited for any longer ends when the disk does answer, or
/// with the process. One thread uses it.
class PlainCopyThread
{
public:
    /// `patience` is what the destructor waits.
    explicit PlainCopyThread(std::chrono::milliseconds patience = std::chrono::seconds(3))
        : patience_(patience)
    {
    }
    /// What runs is given up after that: the files play as they are.
    ~PlainCopyThread();
    PlainCopyThread(const PlainCopyThread&) = delete;
    PlainCopyThread& operator=(const PlainCopyThread&) = delete;

    /// Begins with this file, which is open as `film`, when those before it are done; waits a little, so that
    /// a short recording is final at once.
    void start(const std::string& path, UniqueFd film, std::chrono::milliseconds wait);
    /// How far the present copy has come, 0 to 100; -1: none is made. Thread-safe, as is cancel().
    int percent() const;
    /// Gives up what runs and what waits: those files play as they are.
    void cancel();
    /// The disk does not answer: the destructor does not wait.
    void losePatience() { patience_ = std::chrono::milliseconds(0); }

private:
    std::chrono::milliseconds patience_;
    mutable std::mutex mutex_; ///< of the two below
    std::shared_ptr<CopyWatch> watch_ = std::make_shared<CopyWatch>();
    std::shared_future<void> last_;
};

} // namespace mirvak
