#include "PlainCopyThread.h"

#include "PlainCopy.h"

#include <cstdio>
#include <exception>
#include <pthread.h>

namespace mirvak {

namespace {

// The user waits for it: he begins the next recording, or closes the program.
constexpr std::chrono::seconds patience{3};

} // namespace

void PlainCopyThread::start(const std::string& path, std::chrono::milliseconds wait)
{
    settle();
    running_ = std::async(std::launch::async, [this, path] {
        pthread_setname_np(pthread_self(), "recording copy");
        try {
            makePlain(path, cancelled_);
        } catch (const std::exception& failure) {
            std::fprintf(stderr, "record: %s stays in fragments: %s\n", path.c_str(), failure.what());
        }
    });
    running_.wait_for(wait);
}

void PlainCopyThread::settle()
{
    if (!running_.valid())
        return;
    if (running_.wait_for(patience) == std::future_status::timeout)
        cancelled_ = true;
    running_.get();
    cancelled_ = false;
}

} // namespace mirvak
