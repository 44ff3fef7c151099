#include "FingerCapture.h"

#include "zaz.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <exception>
#include <mutex>
#include <thread>
#include <utility>

namespace {

constexpr int pollsAtMost = 1201; // the time-out: a count, its length is the library's
constexpr std::chrono::microseconds pause(10);
constexpr std::chrono::seconds patienceAtTheEnd(1);

} // namespace

struct FingerCapture::State
{
    std::atomic<bool> isRunning{false}; ///< a capture is wanted

    std::mutex mutex; ///< of all that follows
    std::condition_variable ended;
    std::function<void()> wake; ///< null: nobody listens any more
    std::vector<News> news;
    int workers = 0;

    void tell(News::Kind kind, const std::string& path)
    {
        const std::lock_guard lock(mutex);
        if (!wake)
            return;
        news.push_back({kind, path});
        wake();
    }
};

/// One polling, on its thread.
class FingerCapture::Worker
{
public:
    Worker(std::shared_ptr<State> state, int handle, unsigned address, std::string path)
        : state_(std::move(state)), handle_(handle), address_(address), path_(std::move(path))
    {
        const std::lock_guard lock(state_->mutex);
        ++state_->workers;
    }

    void run()
    {
        try {
            GetFPDataThread();
        } catch (const std::exception& failure) {
            std::fprintf(stderr, "fingerprint: %s\n", failure.what());
        }
        finish();
    }
    void finish()
    {
        ZAZCloseDeviceEx(handle_);
        const std::lock_guard lock(state_->mutex);
        --state_->workers;
        state_->ended.notify_all();
    }

private:
    void GetFPDataThread()
    {
        int result = ZAZ_NO_FINGER;
        for (int poll = 0; poll < pollsAtMost; ++poll) {
            if (result != ZAZ_NO_FINGER || !state_->isRunning)
                break;
            result = ZAZGetImage(handle_, address_);
            if (result == ZAZ_OK) {
                std::puts("get fpdata.");
                GetFPImageFromThread();
            }
            std::this_thread::sleep_for(pause);
        }
        if (result == ZAZ_NO_FINGER && state_->isRunning) {
            state_->isRunning = false;
            state_->tell(News::timeout, path_);
        } else if (result != ZAZ_NO_FINGER && result != ZAZ_OK && result != ZAZ_TAKEN_OVER) {
            state_->tell(News::lost, path_);
        }
    }

    void GetFPImageFromThread()
    {
        std::vector<unsigned char> pixels(ZAZ_BYTES);
        int length = 0;
        const bool isSaved = ZAZUpImage(handle_, address_, pixels.data(), &length) == ZAZ_OK &&
                             ZAZImgData2BMP(pixels.data(), path_.c_str()) == ZAZ_OK;
        state_->tell(isSaved ? News::saved : News::notSaved, path_);
    }

    std::shared_ptr<State> state_;
    int handle_;
    unsigned address_;
    std::string path_;
};

FingerCapture::FingerCapture(std::function<void()> wake) : state_(std::make_shared<State>())
{
    state_->wake = std::move(wake);
}

FingerCapture::~FingerCapture()
{
    stop();
    std::unique_lock lock(state_->mutex);
    state_->wake = nullptr;
    state_->ended.wait_for(lock, patienceAtTheEnd, [this] { return state_->workers == 0; });
}

void FingerCapture::start(int handle, unsigned address, const std::string& path)
{
    state_->isRunning = true;
    const auto worker = std::make_shared<Worker>(state_, handle, address, path);
    try {
        std::thread([worker] { worker->run(); }).detach();
    } catch (const std::exception& failure) { // no thread to be had
        std::fprintf(stderr, "fingerprint: %s\n", failure.what());
        worker->finish();
        state_->tell(News::lost, path);
    }
}

void FingerCapture::stop()
{
    state_->isRunning = false;
}

std::vector<FingerCapture::News> FingerCapture::takeNews()
{
    const std::lock_guard lock(state_->mutex);
    return std::exchange(state_->news, {});
}
