#pragma once

#include "CameraBackend.h"
#include "FrameDecoder.h"
#include "ImagePool.h"
#include "WakeEvent.h"

#include <atomic>
#include <functional>
#include <thread>

namespace mirvak {

/// Drives one open camera: a capture thread takes the newest frame, decodes it into a pooled image and hands
/// it to a sink. While the sink works, the camera drops frames; they are never queued behind it.
///
/// start(), stop() and the destructor are called by one thread; the rest is thread-safe.
class FramePump
{
public:
    /// Gets each picture, which it may change in place but not keep, on the capture thread. Null, once: the
    /// stream has ended by itself.
    using Sink = std::function<void(Image*)>;

    /// Both are borrowed and must outlive the pump.
    FramePump(CameraDevice& device, ImagePool& pool);
    ~FramePump();
    FramePump(const FramePump&) = delete;
    FramePump& operator=(const FramePump&) = delete;

    /// @param waiting number of frames that may wait for the sink, at least 1
    /// @return MIRVAK_BUSY while a stream runs, MIRVAK_NO_DEVICE after the device has gone, or what the
    ///         device answers
    MirvakResult start(const CameraMode& mode, int waiting, Sink sink);
    /// Returns after the sink's last call has returned. MIRVAK_BUSY, and nothing is stopped, when called from
    /// the sink.
    MirvakResult stop();

    /// Width and height of the centred part of the picture that is shown, scaled up to the frame's size: 1.0
    /// is the whole picture. Takes effect with the next frame.
    void setShare(double share) { share_ = share; }

    /// Frames handed to the sink, and frames left out because they were damaged, since the last start().
    unsigned long long delivered() const { return delivered_; }
    unsigned long long damaged() const { return damaged_; }

private:
    void run();
    bool takeFrame(FrameDecoder& decoder);
    void deliver(const RawFrame& frame, FrameDecoder& decoder);
    void noteDamage();
    void callSink(Image* image);

    CameraDevice& device_;
    ImagePool& pool_;
    Sink sink_;
    WakeEvent stop_;
    std::atomic<double> share_{1.0};
    std::atomic<unsigned long long> delivered_{0};
    std::atomic<unsigned long long> damaged_{0};
    std::atomic<bool> gone_{false};
    std::thread thread_; // last: it uses everything above
};

} // namespace mirvak
