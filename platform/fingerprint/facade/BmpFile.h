#pragma once

namespace mirvak {

/// Writes 256 x 360 grey pixels as a BMP file for its owner alone, whole or not at all. False: the reason was
/// printed.
bool writeFingerBmp(const unsigned char* pixels, const char* path);

} // namespace mirvak
