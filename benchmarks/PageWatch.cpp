// The page check of automatic scanning on frames of 3264x2448: while a page lies there, and while another one
// lies there every second. Its limit is a tenth of decoding the same frame, or 4 ms where that is more.
#include "FrameDecoder.h"
#include "LargeAllocations.h"
#include "Material.h"
#include "mirvakcamera.h"

#include <benchmark/benchmark.h>

#include <chrono>
#include <vector>

namespace {

constexpr int checksEachSecond = 6; // every fifth frame at 30 frames a second

std::vector<mirvak::Image> decodedFrames()
{
    mirvak::FrameDecoder decoder;
    std::vector<mirvak::Image> frames(cameraFrames().size());
    for (size_t i = 0; i < frames.size(); ++i)
        decoder.decodeJpeg(cameraFrames()[i].data(), cameraFrames()[i].size(), frames[i]);
    return frames;
}

void watch(benchmark::State& state, int checksPerPage)
{
    std::vector<mirvak::Image> frames = decodedFrames();
    MirvakCamera camera;
    int checks = 0;
    int pages = 0;
    const auto checkOne = [&] {
        mirvak::Image& frame = frames[static_cast<size_t>(checks / checksPerPage) % frames.size()];
        frame.taken = std::chrono::steady_clock::time_point(
            std::chrono::seconds(1) + std::chrono::milliseconds(1000) * checks / checksEachSecond);
        ++checks;
        bool flag = true;
        double value = 0;
        if (camera.MirvakImage_CheckPage(&frame, flag, value, false, 0.32) != 0)
            state.SkipWithError("a frame was not checked");
        pages += flag ? 0 : 1;
    };
    for (int i = 0; i < 2 * checksPerPage && i < 4 * checksEachSecond; ++i)
        checkOne(); // buffers are made
    const unsigned long before = largeAllocations();
    for (auto _ : state)
        checkOne();
    state.counters["allocs/frame"] =
        static_cast<double>(largeAllocations() - before) / static_cast<double>(state.iterations());
    state.counters["checks/page"] = checks / std::max(1.0, static_cast<double>(pages));
}

void PageCheckAtRest(benchmark::State& state)
{
    watch(state, 1'000'000'000);
}

void PageCheckTurning(benchmark::State& state)
{
    watch(state, checksEachSecond);
}

BENCHMARK(PageCheckAtRest)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(PageCheckTurning)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace
