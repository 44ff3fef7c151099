#pragma once

#include "CameraModes.h"
#include "FocusSearch.h"
#include "FramePump.h"

#include <atomic>

namespace mirvak {

/// What a device handle stands for: an open camera with its stream. start() and stop() come from one thread;
/// the paper size, control and focus calls are thread-safe.
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
    MirvakResult stop();

    /// 3: everything the camera sees (A3). 4: the middle of it, half the area (A4), by the camera's own zoom
    /// or else cut out of each frame.
    MirvakResult setPaperSize(int size);
    int paperSize() const { return paperSize_; }

    CameraDevice& device() { return *device_; } ///< for its controls
    MirvakResult setControl(MirvakControl control, int value);
    FocusSearch& focus() { return focus_; }

private:
    std::unique_ptr<CameraDevice> device_;
    CameraModes modes_;
    std::atomic<int> paperSize_;
    std::atomic<bool> isZoomed_{false}; // by the camera itself
    FocusSearch focus_;
    FramePump pump_; // last: it uses the device and the search
};

} // namespace mirvak
