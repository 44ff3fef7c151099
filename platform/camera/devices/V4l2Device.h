#pragma once

#include "CameraBackend.h"
#include "UniqueFd.h"
#include "V4l2Buffers.h"
#include "V4l2Controls.h"
#include "WakeEvent.h"

#include <deque>

namespace mirvak {

/// An open video device of the kernel, streaming through memory-mapped buffers.
class V4l2Device : public CameraDevice
{
public:
    /// `path` is used in messages only.
    V4l2Device(std::string path, UniqueFd fd, std::vector<CameraMode> modes);
    ~V4l2Device() override;

    const std::vector<CameraMode>& modes() const override { return modes_; }
    MirvakResult start(const CameraMode& mode, int waiting) override;
    void stop() override;
    ReadStatus read(RawFrame& frame, std::chrono::milliseconds timeout, const WakeEvent& stop) override;
    void giveBack() override;
    /// The control counts focal length: twice the value is twice the magnification.
    bool setZoom(double factor) override;
    std::vector<MirvakControl> controls() override { return controls_.list(); }
    MirvakResult readControl(MirvakControl control, MirvakControlInfo& info) override
    {
        return controls_.read(control, info);
    }
    MirvakResult setControl(MirvakControl control, int value) override
    {
        return controls_.set(control, value);
    }

private:
    enum class Poll { Ready, TimedOut, Stopped, Gone };

    MirvakResult fail(const char* call) const;
    MirvakResult setMode(const CameraMode& mode);
    Poll waitForBuffer(WakeEvent::Clock::time_point limit, const WakeEvent& stop) const;
    bool collect();
    void dropStale();
    void requeue(unsigned index);
    void describe(const V4l2Buffers::Filled& buffer, RawFrame& frame);

    const std::string path_;
    const UniqueFd fd_;
    V4l2Controls controls_{fd_.get()};
    const std::vector<CameraMode> modes_;
    V4l2Buffers buffers_;
    RawFrame layout_; // size, format and stride of the running stream
    size_t waiting_ = 1;
    bool streaming_ = false;
    std::deque<V4l2Buffers::Filled> filled_; // dequeued, oldest first
    bool sawDamage_ = false;
    int lent_ = -1; // index of the buffer that the reader looks at
};

} // namespace mirvak
