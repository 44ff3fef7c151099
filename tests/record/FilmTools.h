#pragma once

#include "YuvFrame.h"

#include <map>
#include <string>
#include <vector>

using Pixels = std::vector<uint8_t>;

/// One even grey.
Pixels greyFrame(const mirvak::VideoFormat& format, int level);
/// Greys that tell frames apart after coding, in turns of 25.
int levelOf(int number);
/// What no encoder can make small.
Pixels noiseFrame(const mirvak::VideoFormat& format, unsigned seed);

/// What other programs make of a film.
namespace tools {

/// Of the only stream: width, height, r_frame_rate, nb_read_frames and so on, as ffprobe calls them.
std::map<std::string, std::string> filmFacts(const std::string& path);

/// What a player has to say against the file; empty when it plays to its end.
std::string filmComplaints(const std::string& path);

/// All frames, RGB, one after the other, as they come: none repeated or left out.
Pixels filmFrames(const std::string& path);

/// The grey of each frame's middle.
std::vector<int> filmLevels(const std::string& path, const mirvak::VideoFormat& format);

/// The times of the frames, in slots of 1/30 s.
std::vector<int> filmSlots(const std::string& path);

/// The kinds of the file's outermost boxes, in order.
std::vector<std::string> boxesOf(const std::string& path);

} // namespace tools
