#pragma once

#include "UniqueFd.h"

#include <functional>
#include <memory>
#include <string>

struct libevdev;

namespace mirvak {

/// One input device of the kernel (/dev/input/event*).
class InputDevice
{
public:
    /// Invalid when it cannot be opened.
    explicit InputDevice(const std::string& node);
    ~InputDevice();
    InputDevice(InputDevice&&) noexcept;

    bool isValid() const { return device_ != nullptr; }
    /// Why it is invalid, an errno.
    int error() const { return error_; }
    int fd() const { return fd_.get(); }
    /// Reports the number of each key pressed since the last call, without waiting. False when the device is
    /// gone.
    bool read(const std::function<void(int)>& press);

private:
    struct Free
    {
        void operator()(libevdev* device) const;
    };
    UniqueFd fd_;
    int error_ = 0;
    std::unique_ptr<libevdev, Free> device_;
};

} // namespace mirvak
