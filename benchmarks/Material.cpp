#include "Material.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace {

constexpr size_t framesAtMost = 6;

std::vector<std::vector<std::uint8_t>> readFrames()
{
    std::vector<std::filesystem::path> paths;
    for (const auto& entry : std::filesystem::directory_iterator(LUMRO_DESK_DIR "/pictures/3264x2448")) {
        if (entry.path().extension() == ".jpg")
            paths.push_back(entry.path());
    }
    std::sort(paths.begin(), paths.end());
    paths.resize(std::min(paths.size(), framesAtMost));
    std::vector<std::vector<std::uint8_t>> frames;
    for (const auto& path : paths) {
        std::ifstream file(path, std::ios::binary);
        frames.emplace_back(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
    }
    if (frames.empty()) {
        std::fputs("bench: no made pictures of 3264x2448 in " LUMRO_DESK_DIR "\n", stderr);
        std::exit(1);
    }
    return frames;
}

} // namespace

const std::vector<std::vector<std::uint8_t>>& cameraFrames()
{
    static const auto frames = readFrames();
    return frames;
}
