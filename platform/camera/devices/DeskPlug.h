#pragma once

#include "DeskControls.h"
#include "WakeEvent.h"

#include <atomic>

namespace mirvak {

/// The plug of a virtual camera, pulled at most once: who plugs it in again takes another one. What was set
/// at the camera is lost with the power. Thread-safe.
class DeskPlug
{
public:
    DeskControls controls;

    void pull() { pulledAt_ = WakeEvent::Clock::now().time_since_epoch().count(); }
    bool isIn() const { return pulledAt_ == 0; }
    bool isOutSince(WakeEvent::Clock::time_point time) const
    {
        return !isIn() && pulledAt_ <= time.time_since_epoch().count();
    }

private:
    std::atomic<WakeEvent::Clock::rep> pulledAt_{0};
};

} // namespace mirvak
