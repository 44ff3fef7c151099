#pragma once

#include "CameraModes.h"
#include "FramePump.h"

#include <atomic>

namespace mirvak {

/// What a device handle stands for: an open camera with its stream. start() and stop() come from one thread;
/// the paper size calls are thread-safe.
class OpenCamera
{
public:
    OpenCamera(std::unique_ptr<CameraDevice> device, ImagePool& pool);
    ~OpenCamera();
    OpenCamera(const OpenCamera&) = delete;
    OpenCamera& operator=(const OpenCamera&) = delete;

    const CameraModes& modes() const { return modes_; }
    FramePump& pump() { return pump_; }

    /// Resolution `index` of `format` (1 raw, 2 compressed). MIRVAK_BAD_ARGUMENT when there is no such mode.
    MirvakResult start(int format, int index, int waiting, FramePump::Sink sink);
    MirvakResult stop() { return pump_.stop(); }

    /// 3: everything the camera sees (A3). 4: the middle of it, half the area (A4), by the camera's own zoom
    /// or else cut out of each frame.
    MirvakResult setPaperSize(int size);
    int paperSize() const { return paperSize_; }

private:
    std::unique_ptr<CameraDevice> device_;
    CameraModes modes_;
    std::atomic<int> paperSize_;
    std::atomic<bool> isZoomed_{false}; // by the camera itself
    FramePump pump_;                    // last: it uses the device
};

} // namespace mirvak
