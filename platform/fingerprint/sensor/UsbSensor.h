#pragma once

#include "FingerSensor.h"
#include "UniqueFd.h"
#include "helper/Messages.h"

#include <string>
#include <sys/types.h>

namespace mirvak {

/// A real sensor, driven by a program of its own: the driver library wants the event loop that the toolkit
/// already uses for the windows, and a driver may hang.
class UsbSensor : public FingerSensor
{
public:
    /// Starts `program`, which takes the sensor of that number, counted from 1.
    UsbSensor(const std::string& program, int number);
    /// Lets the program close the sensor, for half a second at most.
    ~UsbSensor() override;
    UsbSensor(const UsbSensor&) = delete;
    UsbSensor& operator=(const UsbSensor&) = delete;

    State waitWhile(State state, std::chrono::milliseconds limit) override;
    FingerPixels takePixels() override { return std::move(pixels_); }

private:
    bool start(const std::string& program, int number);
    State receive();

    UniqueFd socket_;
    pid_t pid_ = -1;
    State state_ = State::opening;
    FingerPixels pixels_;
};

} // namespace mirvak
