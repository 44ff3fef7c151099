#pragma once

#include "Codec.h"

#include <initializer_list>

inline mirvak::Bytes bytesOf(std::initializer_list<int> values)
{
    mirvak::Bytes bytes;
    for (const int value : values)
        bytes.push_back(static_cast<std::uint8_t>(value));
    return bytes;
}

/// An Exif segment that holds nothing but the orientation, put behind the start-of-image marker.
inline mirvak::Bytes withOrientation(const mirvak::Bytes& jpeg, int orientation)
{
    mirvak::Bytes segment =
        bytesOf({0xff, 0xe1, 0, 34, 'E', 'x', 'i', 'f', 0, 0, 'M', 'M', 0, 42, 0, 0, 0, 8, 0, 1});
    const mirvak::Bytes entry = bytesOf({0x01, 0x12, 0, 3, 0, 0, 0, 1, 0, orientation, 0, 0, 0, 0, 0, 0});
    segment.insert(segment.end(), entry.begin(), entry.end());
    mirvak::Bytes result = jpeg;
    result.insert(result.begin() + 2, segment.begin(), segment.end());
    return result;
}
