#include "DeskDevice.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>

namespace mirvak {

DeskDevice::DeskDevice(const DeskConfig::Camera& camera,
                       std::vector<CameraMode> modes,
                       std::shared_ptr<DeskPlug> plug)
    : camera_(camera), modes_(std::move(modes)), pictures_({}), plug_(std::move(plug))
{
    plug_->controls.offer(camera_.controls);
}

MirvakResult DeskDevice::start(const CameraMode& mode, int waiting)
{
    if (camera_.failStart || camera_.held)
        return camera_.held ? MIRVAK_BUSY : MIRVAK_IO_ERROR;
    const auto found = std::find(modes_.begin(), modes_.end(), mode);
    if (found == modes_.end())
        return MIRVAK_BAD_ARGUMENT;
    const DeskConfig::Size& chosen = camera_.resolutions[static_cast<size_t>(found - modes_.begin())];
    size_ = chosen.isNative() ? cv::Size() : cv::Size(chosen.width, chosen.height);
    pictures_ = PictureSource(PictureSource::filesOf(camera_.source, size_));
    tunedPicture_.reset();
    if (pictures_.count() == 0)
        return MIRVAK_NO_DEVICE;
    waiting_ = waiting;
    started_ = Clock::now();
    next_ = 0;
    delivered_ = 0;
    return MIRVAK_OK;
}

ReadStatus DeskDevice::read(RawFrame& frame, std::chrono::milliseconds timeout, const WakeEvent& stop)
{
    constexpr double never = std::numeric_limits<double>::infinity();
    const auto now = Clock::now();
    skipLateFrames(now);
    const double frameAt = static_cast<double>(next_) / camera_.framesPerSecond;
    const bool stalled = frameAt >= camera_.stallAfter.value_or(never);
    const double unplugAt = camera_.unplugAfter.value_or(never);
    const bool unplugs = stalled ? std::isfinite(unplugAt) : frameAt >= unplugAt;

    const auto limit = now + timeout;
    const auto due = unplugs ? timeOf(unplugAt) : stalled ? Clock::time_point::max() : timeOf(frameAt);
    if (waitUntil(std::min(due, limit), stop))
        return ReadStatus::Stopped;
    if (!plug_->isIn())
        return ReadStatus::Gone;
    if (due > limit)
        return ReadStatus::TimedOut;
    if (unplugs) {
        plug_->pull();
        return ReadStatus::Gone;
    }
    return show(next_++, frame);
}

/// Sleeps until then, or until the plug is pulled; true when the stop event is signalled.
bool DeskDevice::waitUntil(Clock::time_point time, const WakeEvent& stop) const
{
    constexpr std::chrono::milliseconds glance{100};
    while (plug_->isIn()) {
        const auto until = std::min(time, Clock::now() + glance);
        if (stop.waitUntil(until))
            return true;
        if (until == time)
            return false;
    }
    return stop.isSignalled();
}

DeskDevice::Clock::time_point DeskDevice::timeOf(double seconds) const
{
    return started_ + std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(seconds));
}

void DeskDevice::skipLateFrames(Clock::time_point now)
{
    const double elapsed = std::chrono::duration<double>(now - started_).count();
    const auto newest = static_cast<long long>(std::floor(elapsed * camera_.framesPerSecond));
    next_ = std::max(next_, newest - (waiting_ - 1));
}

std::optional<size_t> DeskDevice::pictureOf(long long frameNumber) const
{
    const auto count = static_cast<long long>(pictures_.count());
    if (count == 0)
        return std::nullopt;
    const double seconds = static_cast<double>(frameNumber) / camera_.framesPerSecond;
    const long long turn =
        camera_.holdSeconds > 0 ? static_cast<long long>(seconds / camera_.holdSeconds) : frameNumber;
    return static_cast<size_t>(camera_.loop ? turn % count : std::min(turn, count - 1));
}

ReadStatus DeskDevice::show(long long frameNumber, RawFrame& frame)
{
    while (const auto picture = pictureOf(frameNumber)) {
        if (!pictures_.frame(*picture, size_, frame))
            continue;
        ++delivered_;
        if (camera_.corruptEvery > 0 && delivered_ % camera_.corruptEvery == 0)
            frame = pictures_.brokenFrame();
        else
            tune(*picture, frame);
        return ReadStatus::Frame;
    }
    std::fprintf(stderr, "virtual camera \"%s\" has no picture left\n", camera_.name.c_str());
    return ReadStatus::Gone;
}

/// A picture that lies there is worked on once, and not at all while everything is as delivered.
void DeskDevice::tune(size_t picture, RawFrame& frame)
{
    const DeskTuning wanted = plug_->controls.tuning();
    if (wanted.isNeutral())
        return;
    if (tunedPicture_ != picture || !(tuning_ == wanted)) {
        if (frame.format == PixelFormat::Mjpeg) {
            if (!decoder_.decode(frame.data, frame.size, tuned_))
                return;
        } else {
            cv::Mat(frame.height, frame.width, CV_8UC3, const_cast<uint8_t*>(frame.data), frame.stride)
                .copyTo(tuned_);
        }
        wanted.apply(tuned_);
        tunedPicture_ = picture;
        tuning_ = wanted;
    }
    frame.format = PixelFormat::Rgb24;
    frame.stride = tuned_.step;
    frame.data = tuned_.data;
    frame.size = tuned_.step * static_cast<size_t>(tuned_.rows);
}

} // namespace mirvak
