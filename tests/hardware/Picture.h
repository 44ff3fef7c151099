#pragma once

#include <string>
#include <vector>

/// Pixels as the camera library hands them out: red, green, blue, rows without padding.
struct Picture
{
    int width = 0, height = 0;
    std::vector<unsigned char> rgb;
};

/// A JPEG file, decoded here and now without the library under test. Empty when it is no JPEG.
Picture decodeJpeg(const std::string& path);

/// What the lab's camera shows in its n-th raw frame, converted by the formulas of ITU-R BT.601 with luma
/// from 16 to 235.
Picture rawFrame(int width, int height, unsigned n);

/// The mean difference of two pictures in grey levels, 255 when their sizes differ.
double meanDifference(const Picture& a, const Picture& b);
