// Ten seconds of the camera's largest film, live through the library: frames lost, how long the camera's
// thread is held up, memory; the processor's time beside the `ffmpeg` command that encodes the same frames in
// the same way. Files lie in memory, so that no disk counts.
#include "mirvakrecord.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <random>
#include <string>
#include <sys/resource.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

constexpr int width = 1600, height = 1200, rate = 30;
constexpr int frameBytes = width * height * 3;
constexpr int seconds = 10;
constexpr int runs = 2;
constexpr int framesMade = 30; ///< played round and round, without a jump at the seam

using Seconds = std::chrono::duration<double>;

void print(const char* what, double value, double limit, double allowed)
{
    std::printf("%-58s %9.2f %9.2f %7.3f %8.2f\n", what, value, limit, value / limit, allowed);
}

/// A page of lines of print that is pushed to and fro, with the noise of a sensor over it.
void makeFrames(const std::string& path)
{
    std::minstd_rand random(7);
    std::normal_distribution<float> sensor(0, 4);
    std::vector<int8_t> noise(1 << 20);
    for (int8_t& n : noise)
        n = static_cast<int8_t>(std::clamp(sensor(random), -20.0f, 20.0f));
    std::vector<uint8_t> print(width * height);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            print[y * width + x] = y % 40 < 20 && x % 600 > 50 && random() % 3 == 0 ? 60 : 225;
    std::ofstream file(path, std::ios::binary);
    std::vector<uint8_t> frame(frameBytes);
    for (int i = 0; i < framesMade; ++i) {
        const size_t shift = static_cast<size_t>(std::abs(framesMade / 2 - i)) * 4;
        const size_t start = random() % noise.size();
        for (size_t at = 0; at < frame.size(); ++at) {
            const int ink = print[(at / 3 + shift) % print.size()];
            frame[at] = static_cast<uint8_t>(ink + noise[(start + at * 7) % noise.size()]);
        }
        file.write(reinterpret_cast<const char*>(frame.data()), frameBytes);
    }
}

double statusMiB(const std::string& name)
{
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;) {
        if (double kib = 0; word == name && status >> kib)
            return kib / 1024;
    }
    return 0;
}

/// In a process of its own: FRAMES FILM.
int record(const char* framesPath, const char* film)
{
    std::vector<uint8_t> frame(frameBytes, 1);
    const int frames = open(framesPath, O_RDONLY | O_CLOEXEC);
    const double before = statusMiB("VmRSS:");
    MirvakRecord recorder;
    if (recorder.MirvakRecord_Start(film, width, height, rate, 2, 0) != MIRVAK_RECORD_OK)
        return 1;
    Seconds total(0), longest(0);
    const auto begin = std::chrono::steady_clock::now();
    for (int i = 0; i < seconds * rate; ++i) {
        std::this_thread::sleep_until(begin + std::chrono::nanoseconds(i * 1'000'000'000LL / rate));
        if (pread(frames, frame.data(), frameBytes, off_t(i % framesMade) * frameBytes) != frameBytes)
            return 1;
        const auto called = std::chrono::steady_clock::now();
        recorder.MirvakRecord_Write(frame.data(), frameBytes);
        const Seconds taken = std::chrono::steady_clock::now() - called;
        total += taken;
        longest = std::max(longest, taken);
    }
    std::this_thread::sleep_until(begin + std::chrono::seconds(seconds));
    const int stopped = recorder.MirvakRecord_Stop();
    close(frames);
    int written = 0, repeated = 0, dropped = 0;
    recorder.MirvakRecord_GetCounts(written, repeated, dropped);
    std::printf("\n%-58s %9s %9s %7s %8s\n",
                "recording, 1600 x 1200, 30 a second",
                "path",
                "limit",
                "ratio",
                "at most");
    print("frames dropped / frames of the camera", dropped, seconds * rate, 0.01);
    print("seconds of film / seconds recorded", double(written) / rate, seconds, 1.02);
    print(
        "Write, mean / time between two frames, ms", total.count() * 1e3 / (seconds * rate), 1e3 / rate, 0.1);
    print("Write, longest / time between two frames, ms", longest.count() * 1e3, 1e3 / rate, 1);
    print("peak memory of the recording / 30 frames, MiB",
          statusMiB("VmHWM:") - before,
          30.0 * frameBytes / (1 << 20),
          1);
    return stopped == MIRVAK_RECORD_OK ? 0 : 1;
}

/// The processor's seconds that a command takes; negative when it fails.
double processorTime(const std::vector<std::string>& command)
{
    std::vector<char*> words;
    for (const std::string& word : command)
        words.push_back(const_cast<char*>(word.c_str()));
    words.push_back(nullptr);
    const pid_t child = fork();
    if (child == 0) {
        execvp(words[0], words.data());
        _exit(127);
    }
    int status = 0;
    rusage used{};
    if (wait4(child, &status, 0, &used) != child || status != 0)
        return -1;
    const auto inSeconds = [](const timeval& time) {
        return double(time.tv_sec) + double(time.tv_usec) / 1e6;
    };
    return inSeconds(used.ru_utime) + inSeconds(used.ru_stime);
}

/// The same settings as the library's, at the same pace.
std::vector<std::string> ffmpegCommand(const std::string& frames, const std::string& film)
{
    const int threads = std::clamp(static_cast<int>(std::thread::hardware_concurrency()), 1, 4);
    return {"ffmpeg",
            "-v",
            "error",
            "-nostdin",
            "-y",
            "-re",
            "-f",
            "rawvideo",
            "-pix_fmt",
            "rgb24",
            "-s",
            "1600x1200",
            "-r",
            "30",
            "-stream_loop",
            std::to_string(seconds * rate / framesMade - 1),
            "-i",
            frames,
            "-c:v",
            "libx264",
            "-preset",
            "superfast",
            "-crf",
            "24",
            "-g",
            "30",
            "-bf",
            "0",
            "-x264-params",
            "scenecut=0",
            "-vf",
            "scale=out_color_matrix=bt709",
            "-colorspace",
            "bt709",
            "-pix_fmt",
            "yuv420p",
            "-threads",
            std::to_string(threads),
            film};
}

} // namespace

int main(int argc, char** argv)
{
    if (argc == 3)
        return record(argv[1], argv[2]);
    char folder[] = "/dev/shm/lumro-bench-XXXXXX";
    if (!mkdtemp(folder))
        return 1;
    const std::string frames = std::string(folder) + "/frames";
    const std::string film = std::string(folder) + "/film.mp4";
    const std::string other = std::string(folder) + "/other.mp4";
    makeFrames(frames);
    // What a virtual machine has not touched for a while comes from its host first: that is not measured.
    volatile uint8_t touched = std::vector<uint8_t>(512 << 20, 1).back();
    (void)touched;
    double own = 1e9, command = 1e9;
    for (int i = 0; i < runs; ++i) { // in turns, so that both see the same load
        unlink(film.c_str());
        own = std::min(own, processorTime({"/proc/self/exe", frames, film}));
        command = std::min(command, processorTime(ffmpegCommand(frames, other)));
    }
    print("processor's time / the ffmpeg command, seconds", own, command, 1.1);
    for (const std::string& file : {frames, film, other})
        unlink(file.c_str());
    rmdir(folder);
    return own > 0 && command > 0 ? 0 : 1;
}
