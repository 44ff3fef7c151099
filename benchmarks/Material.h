#pragma once

#include <cstdint>
#include <string>
#include <vector>

/// The frames that are measured: the made pictures at 3264x2448 as a camera delivers them, JPEG bytes.
const std::vector<std::vector<std::uint8_t>>& cameraFrames();

constexpr int frameWidth = 3264;
constexpr int frameHeight = 2448;
