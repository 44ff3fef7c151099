#pragma once

#include <cstdint>
#include <optional>
#include <vector>

namespace lab {

using Bytes = std::vector<std::uint8_t>;

inline void append(Bytes& bytes, const Bytes& more)
{
    bytes.insert(bytes.end(), more.begin(), more.end());
}

// USB numbers are little endian.
inline void append16(Bytes& bytes, std::uint32_t value)
{
    append(bytes, {std::uint8_t(value), std::uint8_t(value >> 8)});
}

inline void append32(Bytes& bytes, std::uint32_t value)
{
    append16(bytes, value);
    append16(bytes, value >> 16);
}

/// A USB control request.
struct Setup
{
    std::uint8_t type, request;
    std::uint16_t value, index;

    bool isStandard() const { return (type & 0x60) == 0; }
    bool isClass() const { return (type & 0x60) == 0x20; }
    int selector() const { return value >> 8; }
    int entity() const { return index >> 8; }
    int interface() const { return index & 0xff; }
};

/// What goes back to the host; nothing stands for a stall.
using Answer = std::optional<Bytes>;

// Requests of the Video Class.
enum UvcRequest : std::uint8_t {
    SET_CUR = 0x01,
    GET_CUR = 0x81,
    GET_MIN = 0x82,
    GET_MAX = 0x83,
    GET_RES = 0x84,
    GET_LEN = 0x85,
    GET_INFO = 0x86,
    GET_DEF = 0x87,
};

} // namespace lab
