#pragma once

#include "DeskConfig.h"
#include "FingerSensor.h"
#include "zaz.h"

#include <memory>
#include <mutex>
#include <optional>

namespace mirvak {

/// What a handle stands for. Thread-safe.
class Session
{
public:
    /// Begins to look for the sensor of that number, counted from 1.
    explicit Session(int number);

    ZazResult verify();
    ZazResult getImage();
    /// `pixels` holds ZAZ_BYTES.
    ZazResult upImage(unsigned char* pixels);
    /// Takes the sensor away; from now on the session answers TAKEN_OVER.
    void giveUp();

private:
    FingerSensor::State waitWhile(FingerSensor::State state, std::chrono::milliseconds limit);

    std::mutex mutex_;                              ///< of all that follows
    std::optional<DeskConfig::Fingerprint> prints_; ///< for want of a real sensor
    std::unique_ptr<FingerSensor> sensor_;          ///< null: none
    bool isTakenOver_ = false;
    FingerPixels picture_;
};

} // namespace mirvak
