#pragma once

#include "Codec.h"

#include <string>

/// Bytes written as pairs of hexadecimal digits; blanks between them mean nothing.
inline mirvak::Bytes hexBytes(const std::string& text)
{
    mirvak::Bytes bytes;
    for (size_t at = 0; at < text.size(); at += text[at] == ' ' ? 1 : 2) {
        if (text[at] != ' ')
            bytes.push_back(static_cast<std::uint8_t>(std::stoi(text.substr(at, 2), nullptr, 16)));
    }
    return bytes;
}

/// The JPEG with these bytes put in: behind its start-of-image marker, or where told.
inline mirvak::Bytes withSegment(const mirvak::Bytes& jpeg, const mirvak::Bytes& segment, int at = 2)
{
    mirvak::Bytes result = jpeg;
    result.insert(result.begin() + at, segment.begin(), segment.end());
    return result;
}

/// With an Exif segment that holds nothing but the orientation.
inline mirvak::Bytes withOrientation(const mirvak::Bytes& jpeg, int orientation)
{
    mirvak::Bytes exif =
        hexBytes("ffe1 0022 457869660000 4d4d002a00000008 0001 0112000300000001 00000000 00000000");
    exif[exif.size() - 7] = static_cast<std::uint8_t>(orientation);
    return withSegment(jpeg, exif);
}
