#include "PlainCopyThread.h"

#include <cstdio>
#include <exception>
#include <pthread.h>
#include <thread>

namespace mirvak {

namespace {

void makeCopy(const std::string& path, int film, CopyWatch& watch)
{
    try {
        makePlain(path, film, watch);
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "record: %s stays in fragments: %s\n", path.c_str(), failure.what());
    }
}

} // namespace

void PlainCopyThread::start(const std::string& path, UniqueFd film, std::chrono::milliseconds wait)
{
    std::promise<void> done;
    const std::shared_future<void> ended = done.get_future().share();
    std::unique_lock lock(mutex_);
    const std::shared_future<void> before = std::exchange(last_, ended);
    std::thread([path, before, film = std::move(film), watch = watch_, done = std::move(done)]() mutable {
        pthread_setname_np(pthread_self(), "recording copy");
        if (before.valid())
            before.wait();
        makeCopy(path, film.get(), *watch);
        done.set_value();
    }).detach();
    lock.unlock();
    ended.wait_for(wait);
}

int PlainCopyThread::percent() const
{
    const std::lock_guard lock(mutex_);
    const bool runs = last_.valid() && last_.wait_for(std::chrono::seconds(0)) != std::future_status::ready;
    return runs ? int(watch_->percent) : -1;
}

void PlainCopyThread::cancel()
{
    const std::lock_guard lock(mutex_);
    watch_->cancelled = true;
    const int percent = watch_->percent;
    watch_ = std::make_shared<CopyWatch>(); // of the films that follow
    watch_->percent = percent;
}

PlainCopyThread::~PlainCopyThread()
{
    if (!last_.valid())
        return;
    // A copy that is given up takes a moment to remove what it has written.
    const auto toRemove = patience_ / 6;
    if (last_.wait_for(patience_ - toRemove) == std::future_status::ready)
        return;
    watch_->cancelled = true;
    last_.wait_for(toRemove);
}

} // namespace mirvak
