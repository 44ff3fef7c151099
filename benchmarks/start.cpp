// From process start to the first painted camera picture, beside an empty window of the same toolkit. Needs a
// display.   bench_start PROGRAM EMPTY_WINDOW
#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace {

constexpr int runs = 15;
constexpr double frameIntervalMs = 1000.0 / 30;
constexpr double allowed = 1.5;

/// Milliseconds until the program says that it has painted; negative when it ended before.
double timeToPaint(const char* program)
{
    int out[2];
    if (pipe(out) != 0)
        return -1;
    const auto start = std::chrono::steady_clock::now();
    const pid_t child = fork();
    if (child == 0) {
        dup2(out[1], STDOUT_FILENO);
        close(out[0]);
        execl(program, program, static_cast<char*>(nullptr));
        _exit(127);
    }
    close(out[1]);
    FILE* lines = fdopen(out[0], "r");
    std::array<char, 256> line{};
    bool painted = false;
    while (!painted && std::fgets(line.data(), static_cast<int>(line.size()), lines))
        painted = std::string(line.data()) == "first picture painted\n";
    const std::chrono::duration<double, std::milli> elapsed = std::chrono::steady_clock::now() - start;
    kill(child, SIGTERM);
    waitpid(child, nullptr, 0);
    std::fclose(lines);
    return painted ? elapsed.count() : -1;
}

double median(std::vector<double> values)
{
    std::nth_element(values.begin(), values.begin() + static_cast<long>(values.size() / 2), values.end());
    return values[values.size() / 2];
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 3) {
        std::fputs("bench_start PROGRAM EMPTY_WINDOW\n", stderr);
        return 2;
    }
    setenv("LUMRO_START_REPORT", "1", 1);
    std::vector<double> program, empty;
    for (int i = 0; i < runs; ++i) { // in turns, so that both see the same load
        program.push_back(timeToPaint(argv[1]));
        empty.push_back(timeToPaint(argv[2]));
        if (program.back() < 0 || empty.back() < 0) {
            std::fputs("bench_start: a program ended before it painted\n", stderr);
            return 1;
        }
    }
    const double limit = median(empty) + frameIntervalMs;
    std::printf("%-58s %9.1f %9.1f %7.2f %8.2f\n",
                "start to first camera picture / empty window + 1 frame",
                median(program),
                limit,
                median(program) / limit,
                allowed);
    return 0;
}
