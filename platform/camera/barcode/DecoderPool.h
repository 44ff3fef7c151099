#pragma once

#include "DecoderProcess.h"

#include <chrono>
#include <functional>
#include <memory>
#include <string_view>
#include <vector>

namespace mirvak {

/// Decodes pictures in as many helper processes as there are cores, at most two. A picture on which a helper
/// dies is given to a new one once more; one that takes too long is given up. One thread at a time.
class DecoderPool
{
public:
    struct Job
    {
        cv::Size size;
        std::function<void(cv::Mat& canvas)> draw; ///< fills the canvas of that size
        std::uint32_t decoders;                    ///< of helper::Decoders
        int step = 1;                              ///< of helper::Request
        std::function<void(const helper::Reading&, std::string_view bytes)> read;
    };

    /// `program` is the helper's path; pictures have at most `pictureBytes` pixels.
    DecoderPool(const std::string& program, std::size_t pictureBytes);
    ~DecoderPool();

    /// Works through the jobs, in any order, and returns when all are done or given up. What `draw` and
    /// `read` are called for happens on the caller's thread.
    void run(const std::vector<Job>& jobs);
    /// Asked ten times a second while run() works, with the share of its jobs that are done; false gives up
    /// the rest, and ends the helpers that work on it.
    void setWatch(std::function<bool(double share)> goesOn) { goesOn_ = std::move(goesOn); }

    /// The running helpers, for tests.
    std::vector<pid_t> pids() const;
    void setTimeLimit(std::chrono::milliseconds perPicture) { timeLimit_ = perPicture; }

private:
    struct Worker;
    struct Progress;

    void assign(Worker& worker, const std::vector<Job>& jobs, Progress& progress);
    void listen(Worker& worker, const std::vector<Job>& jobs, Progress& progress);
    void waitForNews();
    void giveUp(Progress& progress);

    std::vector<std::unique_ptr<Worker>> workers_;
    std::chrono::milliseconds timeLimit_{3000};
    std::function<bool(double share)> goesOn_;
};

} // namespace mirvak
