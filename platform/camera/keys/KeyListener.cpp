#include "KeyListener.h"

#include <cerrno>
#include <cstdio>
#include <pthread.h>
#include <system_error>

namespace mirvak {
namespace {

thread_local const KeyListener* listenerOfThisThread = nullptr;

} // namespace

bool KeyListener::start(Press cameraKey, Press deskKey, const std::optional<std::filesystem::path>& fifo)
{
    if (listenerOfThisThread == this || thread_.joinable())
        return false;
    cameraKey_ = std::move(cameraKey);
    deskKey_ = std::move(deskKey);
    cameraKeys_ = CameraKeys::create();
    fifo_.reset();
    if (fifo) {
        fifo_.emplace(*fifo);
        if (!fifo_->isValid())
            fifo_.reset();
    }
    if (!cameraKeys_ && !fifo_)
        return false;
    stop_.clear();
    thread_ = std::thread(&KeyListener::run, this);
    return true;
}

void KeyListener::stop()
{
    if (listenerOfThisThread == this || !thread_.joinable())
        return;
    stop_.signal();
    thread_.join();
    cameraKeys_.reset();
    fifo_.reset();
}

void KeyListener::run()
{
    listenerOfThisThread = this;
    pthread_setname_np(pthread_self(), "camera keys");
    try {
        if (cameraKeys_)
            cameraKeys_->rescan();
        while (!stop_.isSignalled())
            listenOnce();
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "camera keys are off: %s\n", failure.what());
    }
}

void KeyListener::listenOnce()
{
    std::vector<pollfd> entries{{stop_.fd(), POLLIN, 0}, {fifo_ ? fifo_->fd() : -1, POLLIN, 0}};
    const size_t cameraEntries = entries.size();
    if (cameraKeys_)
        cameraKeys_->addTo(entries);
    if (poll(entries.data(), entries.size(), -1) < 0) {
        if (errno != EINTR)
            throw std::system_error(errno, std::generic_category(), "poll");
        return;
    }
    if (entries[0].revents != 0)
        return;
    if (entries[1].revents != 0)
        fifo_->read(deskKey_);
    if (cameraKeys_)
        cameraKeys_->handle(entries.data() + cameraEntries, cameraKey_);
}

} // namespace mirvak
