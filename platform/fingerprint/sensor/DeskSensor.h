#pragma once

#include "DeskConfig.h"
#include "FingerSensor.h"

namespace mirvak {

/// The virtual desk's sensor: some time after it is opened a finger lies on it, whose print is the next
/// picture (JPEG, PNG or BMP) of a folder, in the order of their names, round and round. While the folder is
/// empty no finger comes; when it is gone, so is the sensor.
class DeskSensor : public FingerSensor
{
public:
    explicit DeskSensor(const DeskConfig::Fingerprint& desk);

    State waitWhile(State state, std::chrono::milliseconds limit) override;
    FingerPixels takePixels() override { return std::move(pixels_); }

private:
    using Clock = std::chrono::steady_clock;
    State look();
    State read(const std::filesystem::path& print);

    std::filesystem::path folder_;
    Clock::time_point fingerComes_;
    State state_ = State::noFinger;
    FingerPixels pixels_;
};

} // namespace mirvak
