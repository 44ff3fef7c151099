#pragma once

#include <cstdint>

/// What the program that drives the sensors tells the library, a packet each on a socket that both hold; the
/// library says nothing and closes its end when it wants no more.
namespace mirvak::helper {

constexpr int socketFd = 3; ///< in the program

enum class Message : std::uint8_t {
    none,    ///< no sensor, or none that can be opened. The last one.
    ready,   ///< waits for a finger
    picture, ///< followed by the pixels. The last one.
    lost,    ///< the sensor has gone or failed. The last one.
};

} // namespace mirvak::helper
