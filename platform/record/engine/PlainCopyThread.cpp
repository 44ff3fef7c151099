#include "PlainCopyThread.h"

#include "PlainCopy.h"

#include <cstdio>
#include <exception>
#include <pthread.h>
#include <thread>

namespace mirvak {

namespace {

void makeCopy(const std::string& path, int film, const std::atomic<bool>& cancelled)
{
    pthread_setname_np(pthread_self(), "recording copy");
    try {
        makePlain(path, film, cancelled);
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "record: %s stays in fragments: %s\n", path.c_str(), failure.what());
    }
}

} // namespace

void PlainCopyThread::start(const std::string& path, UniqueFd film, std::chrono::milliseconds wait)
{
    std::promise<void> done;
    const std::shared_future<void> before = std::exchange(last_, done.get_future().share());
    std::thread(
        [path, before, film = std::move(film), cancelled = cancelled_, done = std::move(done)]() mutable {
            if (before.valid())
                before.wait();
            makeCopy(path, film.get(), *cancelled);
            done.set_value();
        })
        .detach();
    last_.wait_for(wait);
}

PlainCopyThread::~PlainCopyThread()
{
    if (!last_.valid())
        return;
    // A copy that is given up takes a moment to remove what it has written.
    const auto toRemove = patience_ / 6;
    if (last_.wait_for(patience_ - toRemove) == std::future_status::ready)
        return;
    *cancelled_ = true;
    last_.wait_for(toRemove);
}

} // namespace mirvak
