#include "InputDevice.h"

#include "KeyNumbers.h"

#include <libevdev/libevdev.h>

#include <cerrno>
#include <fcntl.h>

namespace mirvak {

void InputDevice::Free::operator()(libevdev* device) const
{
    libevdev_free(device);
}

InputDevice::InputDevice(const std::string& node) : fd_(open(node.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC))
{
    libevdev* device = nullptr;
    error_ = fd_.isValid() ? -libevdev_new_from_fd(fd_.get(), &device) : errno;
    device_.reset(device);
}

InputDevice::~InputDevice() = default;
InputDevice::InputDevice(InputDevice&&) noexcept = default;

bool InputDevice::read(const std::function<void(int)>& press)
{
    constexpr int pressed = 1; // 0 is released, 2 is repeated
    unsigned flag = LIBEVDEV_READ_FLAG_NORMAL;
    while (true) {
        input_event event{};
        const int status = libevdev_next_event(device_.get(), flag, &event);
        if (status == -EAGAIN && flag == LIBEVDEV_READ_FLAG_NORMAL)
            return true;
        if (status == -EAGAIN) {
            flag = LIBEVDEV_READ_FLAG_NORMAL;
            continue;
        }
        if (status < 0)
            return status == -EINTR;
        if (status == LIBEVDEV_READ_STATUS_SYNC)
            flag = LIBEVDEV_READ_FLAG_SYNC; // the kernel's queue ran over: catch up with the present state
        if (event.type != EV_KEY || event.value != pressed)
            continue;
        if (const int number = keyNumber(event.code))
            press(number);
    }
}

} // namespace mirvak
