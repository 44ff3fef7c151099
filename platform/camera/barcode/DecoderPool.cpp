#include "DecoderPool.h"

#include <algorithm>
#include <cstdio>
#include <deque>
#include <poll.h>
#include <thread>

namespace mirvak {

namespace {

using Clock = std::chrono::steady_clock;
constexpr unsigned processesAtMost = 2;
constexpr int noJob = -1;
constexpr std::chrono::milliseconds watchInterval(100);
constexpr int triesPerJob = 2;
constexpr int deathsAtMost = 12; // in one run; beyond, the helper itself is broken

} // namespace

struct DecoderPool::Worker
{
    Worker(const std::string& program, std::size_t pictureBytes) : process(program, pictureBytes) {}
    DecoderProcess process;
    int job = noJob;
    Clock::time_point deadline;
};

struct DecoderPool::Progress
{
    explicit Progress(std::size_t count) : tries(count)
    {
        for (std::size_t i = 0; i < count; ++i)
            waiting.push_back(static_cast<int>(i));
    }
    std::deque<int> waiting;
    std::vector<int> tries;
    int deaths = 0;
};

DecoderPool::DecoderPool(const std::string& program, std::size_t pictureBytes)
{
    const unsigned count = std::clamp(std::thread::hardware_concurrency(), 1U, processesAtMost);
    for (unsigned i = 0; i < count; ++i)
        workers_.push_back(std::make_unique<Worker>(program, pictureBytes));
}

DecoderPool::~DecoderPool() = default;

std::vector<pid_t> DecoderPool::pids() const
{
    std::vector<pid_t> result;
    for (const auto& worker : workers_) {
        if (worker->process.pid() > 0)
            result.push_back(worker->process.pid());
    }
    return result;
}

void DecoderPool::run(const std::vector<Job>& jobs)
{
    Progress progress(jobs.size());
    const auto isBusy = [](const auto& worker) { return worker->job != noJob; };
    while (!progress.waiting.empty() || std::any_of(workers_.begin(), workers_.end(), isBusy)) {
        for (const auto& worker : workers_) {
            if (worker->job == noJob && !progress.waiting.empty())
                assign(*worker, jobs, progress);
        }
        waitForNews();
        const auto open =
            progress.waiting.size() + size_t(std::count_if(workers_.begin(), workers_.end(), isBusy));
        if (goesOn_ && !goesOn_(1 - static_cast<double>(open) / static_cast<double>(jobs.size())))
            return giveUp(progress);
        for (const auto& worker : workers_) {
            if (worker->job != noJob)
                listen(*worker, jobs, progress);
        }
    }
}

void DecoderPool::assign(Worker& worker, const std::vector<Job>& jobs, Progress& progress)
{
    const int index = progress.waiting.front();
    progress.waiting.pop_front();
    const Job& job = jobs[static_cast<std::size_t>(index)];
    cv::Mat canvas = worker.process.canvas(job.size);
    if (canvas.empty())
        return;
    job.draw(canvas);
    if (!worker.process.ask({job.size.width, job.size.height, job.step, job.decoders})) {
        progress.waiting.clear(); // what cannot be started now cannot be started for the next one either
        return;
    }
    ++progress.tries[static_cast<std::size_t>(index)];
    worker.job = index;
    worker.deadline = Clock::now() + timeLimit_;
}

void DecoderPool::giveUp(Progress& progress)
{
    progress.waiting.clear();
    for (const auto& worker : workers_) {
        if (worker->job != noJob)
            worker->process.stop();
        worker->job = noJob;
    }
}

void DecoderPool::waitForNews()
{
    std::vector<pollfd> sockets;
    auto deadline = goesOn_ ? Clock::now() + watchInterval : Clock::time_point::max();
    for (const auto& worker : workers_) {
        if (worker->job == noJob)
            continue;
        sockets.push_back({worker->process.socket(), POLLIN, 0});
        deadline = std::min(deadline, worker->deadline);
    }
    if (sockets.empty())
        return;
    const auto rest = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now());
    poll(sockets.data(), sockets.size(), static_cast<int>(std::max<long>(0, rest.count() + 1)));
}

void DecoderPool::listen(Worker& worker, const std::vector<Job>& jobs, Progress& progress)
{
    const auto index = static_cast<std::size_t>(worker.job);
    helper::Reading reading;
    std::string bytes;
    for (;;) {
        switch (worker.process.receive(reading, bytes)) {
        case DecoderProcess::News::reading:
            jobs[index].read(reading, bytes);
            continue;
        case DecoderProcess::News::end:
            worker.job = noJob;
            return;
        case DecoderProcess::News::died:
            if (++progress.deaths >= deathsAtMost)
                progress.waiting.clear();
            else if (progress.tries[index] < triesPerJob)
                progress.waiting.push_back(worker.job);
            worker.job = noJob;
            return;
        case DecoderProcess::News::none:
            if (Clock::now() < worker.deadline)
                return;
            std::fputs("barcodes: a part of the picture took too long and is left out\n", stderr);
            worker.process.stop();
            worker.job = noJob;
            return;
        }
    }
}

} // namespace mirvak
