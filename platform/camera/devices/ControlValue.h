#pragma once

#include "mirvakcamera.h"

#include <algorithm>

namespace mirvak {

/// The value that a control takes when it is asked for `wanted`: within its range and on a step of it.
inline int allowedValue(const MirvakControlInfo& info, int wanted)
{
    const long long value = std::clamp(wanted, info.minimum, std::max(info.minimum, info.maximum));
    const long long step = std::max(info.step, 1);
    const long long steps = (value - info.minimum + step / 2) / step;
    const long long last = (static_cast<long long>(info.maximum) - info.minimum) / step;
    return static_cast<int>(info.minimum + std::min(steps, last) * step);
}

} // namespace mirvak
