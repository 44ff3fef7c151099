#pragma once

#include "Setup.h"

#include <map>

namespace lab {

/// Focus, exposure, zoom, brightness and their like: values that are kept and given back. Each change is
/// told on standard output as "control ENTITY SELECTOR VALUE".
class Controls
{
public:
    Controls();
    Answer request(const Setup& setup, const Bytes& data);

private:
    struct Control
    {
        int length; ///< bytes
        int minimum, maximum, step, standard, current;
    };

    static Answer powerMode(const Setup& setup);
    static void set(const Setup& setup, Control& control, const Bytes& data);

    std::map<std::pair<int, int>, Control> controls_; ///< by entity and selector
};

} // namespace lab
