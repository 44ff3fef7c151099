#pragma once

#include "CameraBackend.h"

#include <mutex>
#include <optional>

namespace mirvak {

/// The controls of an open video device of the kernel. Thread-safe, also against its stream.
class V4l2Controls
{
public:
    /// `fd` is borrowed. Nothing is asked before the first call.
    explicit V4l2Controls(int fd) : fd_(fd) {}

    std::vector<MirvakControl> list();
    MirvakResult read(MirvakControl control, MirvakControlInfo& info);
    MirvakResult set(MirvakControl control, int value);

private:
    /// A control of ours and how the driver calls it.
    struct Known
    {
        MirvakControl control;
        unsigned id;
        int off = 0, on = 1; ///< the driver's values of a switch
        int entries = 0;     ///< of a menu
    };

    const std::vector<Known>& known();
    const Known* find(MirvakControl control);
    std::optional<Known> ask(MirvakControl control, unsigned id) const;
    int menuEntries(unsigned id, int minimum, int maximum) const;

    const int fd_;
    std::once_flag asked_;
    std::vector<Known> known_;
};

} // namespace mirvak
