#include "FilmTools.h"

#include "Command.h"

#include <cmath>
#include <fstream>
#include <random>
#include <sstream>

Pixels greyFrame(const mirvak::VideoFormat& format, int level)
{
    return Pixels(format.frameBytes(), static_cast<uint8_t>(level));
}

int levelOf(int number)
{
    return 20 + number % 25 * 9;
}

Pixels noiseFrame(const mirvak::VideoFormat& format, unsigned seed)
{
    std::minstd_rand random(seed + 1);
    Pixels pixels(format.frameBytes());
    for (uint8_t& byte : pixels)
        byte = static_cast<uint8_t>(random() >> 8);
    return pixels;
}

namespace tools {

std::map<std::string, std::string> filmFacts(const std::string& path)
{
    std::istringstream said(
        run("ffprobe -v error -count_frames -show_streams -of default=noprint_wrappers=1 '" + path + "'"));
    std::map<std::string, std::string> facts;
    for (std::string line; std::getline(said, line);) {
        if (const size_t at = line.find('='); at != std::string::npos)
            facts[line.substr(0, at)] = line.substr(at + 1);
    }
    return facts;
}

std::string filmComplaints(const std::string& path)
{
    return run("ffmpeg -v warning -nostdin -i '" + path + "' -f null -");
}

Pixels filmFrames(const std::string& path)
{
    const std::string bytes = run("ffmpeg -v error -nostdin -i '" + path +
                                  "' -vsync passthrough -sws_flags accurate_rnd+full_chroma_int"
                                  " -f rawvideo -pix_fmt rgb24 -");
    return Pixels(bytes.begin(), bytes.end());
}

std::vector<int> filmLevels(const std::string& path, const mirvak::VideoFormat& format)
{
    const Pixels frames = filmFrames(path);
    const size_t bytes = size_t(format.filmWidth()) * format.filmHeight() * 3;
    std::vector<int> levels;
    for (size_t at = 0; at + bytes <= frames.size(); at += bytes)
        levels.push_back(
            frames[at + (format.filmHeight() / 2 * format.filmWidth() + format.filmWidth() / 2) * 3]);
    return levels;
}

std::vector<int> filmSlots(const std::string& path)
{
    std::istringstream said(
        run("ffprobe -v error -show_entries frame=pts_time -of default=noprint_wrappers=1:nokey=1 '" + path +
            "'"));
    std::vector<int> slots;
    for (double time = 0; said >> time;)
        slots.push_back(static_cast<int>(std::lround(time * 30)));
    return slots;
}

std::vector<std::string> boxesOf(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    std::vector<std::string> boxes;
    for (unsigned char head[8]; file.read(reinterpret_cast<char*>(head), sizeof head);) {
        boxes.emplace_back(head + 4, head + 8);
        const unsigned size = unsigned(head[0]) << 24 | head[1] << 16 | head[2] << 8 | head[3];
        file.seekg(static_cast<std::streamoff>(size) - 8, std::ios::cur);
    }
    return boxes;
}

} // namespace tools
