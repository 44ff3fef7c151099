#pragma once

#include "DeskTuning.h"
#include "mirvakcamera.h"

#include <array>
#include <mutex>
#include <vector>

namespace mirvak {

/// What is set at a virtual camera, as long as it is plugged in. Thread-safe.
class DeskControls
{
public:
    DeskControls();

    /// What the camera offers from now on; the rest is as delivered.
    void offer(const std::vector<int>& controls);
    std::vector<MirvakControl> list() const;
    MirvakResult read(MirvakControl control, MirvakControlInfo& info) const;
    MirvakResult set(MirvakControl control, int value);

    DeskTuning tuning() const;

private:
    bool isOffered(int control) const;
    bool isHeld(int control) const;
    int valueOf(int control) const;

    mutable std::mutex mutex_;
    std::vector<int> offered_;
    std::array<int, MIRVAK_ANTI_FLICKER + 1> values_{}; // set by hand
};

} // namespace mirvak
