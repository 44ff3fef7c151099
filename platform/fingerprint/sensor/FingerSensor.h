#pragma once

#include "FingerPixels.h"

#include <chrono>

namespace mirvak {

/// One sensor, from the moment in which it is looked for until it has the picture of one finger. Its end
/// gives it back. One thread at a time.
class FingerSensor
{
public:
    enum class State {
        opening,  ///< it is being looked for
        none,     ///< there is none, or none can be opened. Final.
        noFinger, ///< it waits for one
        finger,   ///< the picture is there. Final.
        lost,     ///< it has gone or failed meanwhile. Final.
    };

    virtual ~FingerSensor() = default;
    /// The present state; as long as that is `state`, waits for another one, but no longer than `limit`.
    virtual State waitWhile(State state, std::chrono::milliseconds limit) = 0;
    /// In State::finger only; may be fetched once.
    virtual FingerPixels takePixels() = 0;
};

} // namespace mirvak
