#pragma once

#include "CameraBackend.h"
#include "DeskConfig.h"
#include "DeskPlug.h"
#include "PictureSource.h"
#include "WakeEvent.h"

namespace mirvak {

/// A camera of the virtual desk: plays pictures at its rate and misbehaves as asked. Time runs from start();
/// a reader that is late loses frames, as with a real camera.
class DeskDevice : public CameraDevice
{
public:
    /// The stream ends when the plug is pulled, by the desk or by the camera itself.
    DeskDevice(const DeskConfig::Camera& camera,
               std::vector<CameraMode> modes,
               std::shared_ptr<DeskPlug> plug);

    const std::vector<CameraMode>& modes() const override { return modes_; }
    MirvakResult start(const CameraMode& mode, int waiting) override;
    void stop() override {}
    ReadStatus read(RawFrame& frame, std::chrono::milliseconds timeout, const WakeEvent& stop) override;
    std::vector<MirvakControl> controls() override { return plug_->controls.list(); }
    MirvakResult readControl(MirvakControl control, MirvakControlInfo& info) override
    {
        return plug_->controls.read(control, info);
    }
    MirvakResult setControl(MirvakControl control, int value) override
    {
        return plug_->controls.set(control, value);
    }

private:
    using Clock = WakeEvent::Clock;

    bool waitUntil(Clock::time_point time, const WakeEvent& stop) const;
    Clock::time_point timeOf(double seconds) const;
    void skipLateFrames(Clock::time_point now);
    std::optional<size_t> pictureOf(long long frameNumber) const;
    ReadStatus show(long long frameNumber, RawFrame& frame);
    void tune(size_t picture, RawFrame& frame);

    const DeskConfig::Camera camera_;
    const std::vector<CameraMode> modes_; // one for each resolution of the camera
    PictureSource pictures_;              // of the chosen size
    const std::shared_ptr<DeskPlug> plug_;
    cv::Size size_; // empty: each picture in its own
    int waiting_ = 1;
    Clock::time_point started_;
    long long next_ = 0;      // number of the next frame by the clock
    long long delivered_ = 0; // frames handed out
    JpegDecoder decoder_;
    cv::Mat tuned_;                      // the last picture as the controls made it
    DeskTuning tuning_;                  // those controls
    std::optional<size_t> tunedPicture_; // which it is
};

} // namespace mirvak
