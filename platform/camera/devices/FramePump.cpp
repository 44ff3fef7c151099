#include "FramePump.h"

#include <chrono>
#include <cstdio>
#include <exception>
#include <pthread.h>

namespace mirvak {
namespace {

thread_local const FramePump* pumpOfThisThread = nullptr;

} // namespace

FramePump::FramePump(CameraDevice& device, ImagePool& pool) : device_(device), pool_(pool) {}

FramePump::~FramePump()
{
    stop();
}

MirvakResult FramePump::start(const CameraMode& mode, int waiting, Sink sink)
{
    if (gone_)
        return MIRVAK_NO_DEVICE;
    if (pumpOfThisThread == this || thread_.joinable())
        return MIRVAK_BUSY;
    const MirvakResult result = device_.start(mode, waiting);
    if (result != MIRVAK_OK)
        return result;
    sink_ = std::move(sink);
    stop_.clear();
    delivered_ = 0;
    damaged_ = 0;
    try {
        thread_ = std::thread(&FramePump::run, this);
    } catch (const std::system_error&) {
        device_.stop();
        return MIRVAK_NO_MEMORY;
    }
    return MIRVAK_OK;
}

MirvakResult FramePump::stop()
{
    if (pumpOfThisThread == this)
        return MIRVAK_BUSY;
    if (!thread_.joinable())
        return MIRVAK_OK;
    stop_.signal();
    thread_.join();
    device_.stop();
    sink_ = nullptr;
    return MIRVAK_OK;
}

void FramePump::run()
{
    pumpOfThisThread = this;
    pthread_setname_np(pthread_self(), "camera");
    try {
        FrameDecoder decoder;
        while (takeFrame(decoder)) {
        }
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "camera stream ended: %s\n", failure.what());
        gone_ = true;
    }
    if (gone_)
        callSink(nullptr);
}

bool FramePump::takeFrame(FrameDecoder& decoder)
{
    // Without frames nothing happens here; the time-out only keeps a driver from waiting for ever.
    constexpr std::chrono::seconds patience{1};
    RawFrame frame;
    switch (device_.read(frame, patience, stop_)) {
    case ReadStatus::Frame:
        deliver(frame, decoder);
        break;
    case ReadStatus::Damaged:
        noteDamage();
        break;
    case ReadStatus::TimedOut:
        break;
    case ReadStatus::Gone:
        gone_ = true;
        return false;
    case ReadStatus::Stopped:
        return false;
    }
    return true;
}

void FramePump::deliver(const RawFrame& frame, FrameDecoder& decoder)
{
    std::unique_ptr<Image> image = pool_.take(frame.width, frame.height);
    image->taken = std::chrono::steady_clock::now();
    const bool whole = decoder.decode(frame, share_, *image);
    device_.giveBack(); // before the sink, so that the driver can go on filling
    if (!whole)
        noteDamage();
    else if (!stop_.isSignalled()) {
        callSink(image.get());
        ++delivered_;
    }
    pool_.giveBackShown(std::move(image));
}

void FramePump::noteDamage()
{
    const unsigned long long count = ++damaged_;
    unsigned long long power = 1;
    while (power < count)
        power *= 10;
    if (power == count) // 1, 10, 100 ...: a bad cable must not flood the log
        std::fprintf(stderr, "damaged camera frame left out (%llu so far)\n", count);
}

void FramePump::callSink(Image* image)
{
    try {
        sink_(image);
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "frame callback failed: %s\n", failure.what());
    } catch (...) {
        std::fprintf(stderr, "frame callback failed\n");
    }
}

} // namespace mirvak
