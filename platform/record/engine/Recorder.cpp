#include "Recorder.h"

#include "FitFrame.h"

#include <array>
#include <cstdio>
#include <cstring>
#include <pthread.h>
#include <sys/resource.h>
#include <thread>
#include <unistd.h>

namespace mirvak {

namespace {

// The preview and the window come first. The encoder's own threads inherit it.
void yieldToOthers()
{
    constexpr int niceness = 5;
    setpriority(PRIO_PROCESS, static_cast<id_t>(gettid()), niceness);
}

} // namespace

Recorder::Recorder(const std::string& path,
                   const VideoFormat& format,
                   std::vector<EncoderChoice> choices,
                   Clock clock)
    : format_(format), clock_(std::move(clock)), film_(path, format, std::move(choices)),
      schedule_(format.framesPerSecond, format.frameBytes())
{
}

std::chrono::nanoseconds Recorder::steadyClock()
{
    return std::chrono::steady_clock::now().time_since_epoch();
}

MirvakRecordResult Recorder::start()
{
    std::promise<MirvakRecordResult> opened;
    std::future<MirvakRecordResult> result = opened.get_future();
    std::promise<void> ended;
    threadEnded_ = ended.get_future();
    std::thread([self = shared_from_this(), opened = std::move(opened), ended = std::move(ended)]() mutable {
        self->run(std::move(opened));
        self.reset();
        ended.set_value();
    }).detach();
    return result.get();
}

MirvakRecordResult Recorder::write(const uint8_t* rgb, size_t bytes, int width, int height)
{
    const std::lock_guard order(writing_);
    std::unique_lock lock(mutex_);
    if (state_ != State::running)
        return result_ == MIRVAK_RECORD_OK ? MIRVAK_RECORD_NOT_RECORDING : result_;
    if (width < 1 || height < 1 || bytes != size_t(width) * size_t(height) * 3) {
        ++refused_;
        return MIRVAK_RECORD_WRONG_SIZE;
    }
    const std::chrono::nanoseconds arrival = now();
    FrameBuffer buffer = schedule_.emptyBuffer();
    lock.unlock();
    fitFrame(rgb, width, height, format_, buffer.get());
    lock.lock();
    if (state_ != State::running) {
        schedule_.giveBack(std::move(buffer));
        return result_ == MIRVAK_RECORD_OK ? MIRVAK_RECORD_NOT_RECORDING : result_;
    }
    schedule_.push(std::move(buffer), arrival);
    return MIRVAK_RECORD_OK;
}

MirvakRecordResult Recorder::stop(std::chrono::milliseconds patience)
{
    {
        const std::lock_guard lock(mutex_);
        if (state_ == State::running) {
            state_ = State::closing;
            schedule_.close(now());
        }
    }
    wake_.notify_one();
    if (threadEnded_.valid() && !awaitEnd(patience)) {
        std::fprintf(stderr, "record: %s: the disk does not answer\n", film_.path().c_str());
        return MIRVAK_RECORD_IO_ERROR;
    }
    const std::lock_guard lock(mutex_);
    if (result_ != MIRVAK_RECORD_OK)
        return result_;
    return film_.plays() ? MIRVAK_RECORD_OK : MIRVAK_RECORD_NO_FRAME;
}

bool Recorder::awaitEnd(std::chrono::milliseconds patience) const
{
    unsigned seen = 0;
    do {
        seen = film_.steps();
        if (threadEnded_.wait_for(patience) == std::future_status::ready)
            return true;
    } while (film_.steps() != seen);
    return false;
}

bool Recorder::isClosed() const
{
    const std::lock_guard lock(mutex_);
    return state_ == State::closed;
}

std::chrono::milliseconds Recorder::length() const
{
    const std::lock_guard lock(mutex_);
    const int64_t slots = state_ == State::closed ? film_.slots() : schedule_.slots();
    return std::chrono::duration_cast<std::chrono::milliseconds>(
        FrameGrid(format_.framesPerSecond).lengthOf(slots));
}

RecordCounts Recorder::counts() const
{
    const std::lock_guard lock(mutex_);
    return schedule_.counts();
}

int Recorder::refused() const
{
    const std::lock_guard lock(mutex_);
    return refused_;
}

MirvakRecordResult Recorder::result() const
{
    const std::lock_guard lock(mutex_);
    return result_;
}

void Recorder::run(std::promise<MirvakRecordResult> opened)
{
    pthread_setname_np(pthread_self(), "recorder");
    yieldToOthers();
    if (open(opened))
        film();
}

bool Recorder::open(std::promise<MirvakRecordResult>& opened)
{
    MirvakRecordResult result = MIRVAK_RECORD_NO_MEMORY;
    try {
        const bool isOpen = film_.open();
        result = isOpen ? MIRVAK_RECORD_OK : filmResult();
        if (!isOpen && result != MIRVAK_RECORD_EXISTS) // the caller takes another name
            end(result, film_.error());
    } catch (const std::exception& failure) {
        end(result, failure.what());
    }
    if (result == MIRVAK_RECORD_OK) {
        const std::lock_guard lock(mutex_);
        begin_ = clock_();
        state_ = State::running;
        std::printf("record: %s, %d x %d, %d frames a second\n",
                    film_.encoderName().c_str(),
                    format_.filmWidth(),
                    format_.filmHeight(),
                    format_.framesPerSecond);
        std::fflush(stdout);
    }
    opened.set_value(result);
    return result == MIRVAK_RECORD_OK;
}

void Recorder::film()
{
    try {
        touchBuffers();
        while (filmNext()) {
        }
    } catch (const std::exception& failure) {
        end(MIRVAK_RECORD_NO_MEMORY, failure.what());
    }
    close();
}

void Recorder::close()
{
    try {
        if (!film_.close() && result() == MIRVAK_RECORD_OK)
            end(filmResult(), film_.error());
    } catch (const std::exception& failure) {
        end(MIRVAK_RECORD_NO_MEMORY, failure.what());
    }
    const std::lock_guard lock(mutex_);
    state_ = State::closed;
}

// Fresh memory is slow when it is first written: that is not left to the camera's thread.
void Recorder::touchBuffers()
{
    std::array<FrameBuffer, 3> buffers; // as many as are in use while the encoder keeps up
    std::unique_lock lock(mutex_);
    for (FrameBuffer& buffer : buffers)
        buffer = schedule_.emptyBuffer();
    lock.unlock();
    for (const FrameBuffer& buffer : buffers)
        std::memset(buffer.get(), 0, format_.frameBytes());
    lock.lock();
    for (FrameBuffer& buffer : buffers)
        schedule_.giveBack(std::move(buffer));
}

bool Recorder::filmNext()
{
    std::unique_lock lock(mutex_);
    Schedule::Step step = schedule_.next(now());
    switch (step.task) {
    case Schedule::Task::end:
        return false;
    case Schedule::Task::wait:
        wake_.wait_for(lock, step.until - now());
        return true;
    case Schedule::Task::frame:
    case Schedule::Task::repeat:
        break;
    }
    lock.unlock();
    return show(step);
}

bool Recorder::show(Schedule::Step& step)
{
    const bool isShown = step.buffer ? film_.add(step.buffer.get(), step.slot) : film_.repeat(step.slot);
    if (step.buffer) {
        const std::lock_guard lock(mutex_);
        schedule_.giveBack(std::move(step.buffer));
    }
    return isShown;
}

void Recorder::end(MirvakRecordResult result, const std::string& why)
{
    std::fprintf(stderr, "record: %s: %s\n", film_.path().c_str(), why.c_str());
    const std::lock_guard lock(mutex_);
    state_ = State::ended;
    result_ = result;
}

MirvakRecordResult Recorder::filmResult() const
{
    if (film_.isNameTaken())
        return MIRVAK_RECORD_EXISTS;
    return film_.hasFileError() ? MIRVAK_RECORD_IO_ERROR : MIRVAK_RECORD_NO_ENCODER;
}

} // namespace mirvak
