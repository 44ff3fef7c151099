#pragma once

#include <cstdint>
#include <vector>

namespace lab {

using Bytes = std::vector<std::uint8_t>;

// USB numbers are little endian.
inline void append16(Bytes& bytes, std::uint32_t value)
{
    bytes.push_back(value & 0xff);
    bytes.push_back(value >> 8 & 0xff);
}

inline void append32(Bytes& bytes, std::uint32_t value)
{
    append16(bytes, value & 0xffff);
    append16(bytes, value >> 16);
}

inline void append(Bytes& bytes, const Bytes& more)
{
    bytes.insert(bytes.end(), more.begin(), more.end());
}

inline std::uint32_t read32(const std::uint8_t* bytes)
{
    return bytes[0] | bytes[1] << 8 | bytes[2] << 16 | std::uint32_t(bytes[3]) << 24;
}

inline void write32(std::uint8_t* bytes, std::uint32_t value)
{
    for (int i = 0; i < 4; ++i)
        bytes[i] = value >> 8 * i & 0xff;
}

} // namespace lab
