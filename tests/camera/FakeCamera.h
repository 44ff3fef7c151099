#pragma once

#include "CameraBackend.h"
#include "Pictures.h"
#include "WakeEvent.h"

#include <atomic>
#include <deque>

/// A camera that does what the test scripts, step by step, as fast as it is read. After the script it stalls.
class FakeCamera : public mirvak::CameraDevice
{
public:
    static constexpr int width = 64;
    static constexpr int height = 48;

    struct Step
    {
        mirvak::ReadStatus status;
        pictures::Bytes jpeg; ///< for a frame
        bool isLate = false;  ///< comes only when the stop has been asked for
    };
    static Step picture(int number)
    {
        return {mirvak::ReadStatus::Frame,
                pictures::solidJpeg({width, height}, cv::Scalar::all(number * 6)),
                false};
    }
    static Step garbage() { return {mirvak::ReadStatus::Frame, {0xff, 0xd8, 0xff, 0x00}, false}; }

    explicit FakeCamera(std::deque<Step> script, bool endless = false)
        : script_(std::move(script)), endless_(endless)
    {
    }

    std::atomic<bool> lent{false};    ///< a frame has been read and not given back
    std::atomic<bool> running{false}; ///< between start() and stop()

    const std::vector<mirvak::CameraMode>& modes() const override { return modes_; }
    MirvakResult start(const mirvak::CameraMode&, int) override
    {
        running = true;
        return MIRVAK_OK;
    }
    void stop() override { running = false; }
    mirvak::ReadStatus
    read(mirvak::RawFrame& frame, std::chrono::milliseconds timeout, const mirvak::WakeEvent& stop) override
    {
        if (!script_.empty() && script_.front().isLate)
            stop.waitUntil(mirvak::WakeEvent::Clock::now() + std::chrono::seconds(60));
        else if (stop.isSignalled())
            return mirvak::ReadStatus::Stopped;
        if (script_.empty())
            return stop.waitUntil(mirvak::WakeEvent::Clock::now() + timeout) ? mirvak::ReadStatus::Stopped
                                                                             : mirvak::ReadStatus::TimedOut;
        current_ = script_.front();
        script_.pop_front();
        if (endless_)
            script_.push_back(current_);
        lent = current_.status == mirvak::ReadStatus::Frame;
        frame = {mirvak::PixelFormat::Mjpeg, width, height, 0, current_.jpeg.data(), current_.jpeg.size()};
        return current_.status;
    }
    void giveBack() override { lent = false; }

private:
    std::vector<mirvak::CameraMode> modes_{{mirvak::PixelFormat::Mjpeg, width, height}};
    std::deque<Step> script_;
    const bool endless_;
    Step current_{mirvak::ReadStatus::TimedOut, {}, false};
};
