// The way of one preview frame at 3264x2448: decode, turn into a picture for the view, hand it over. Its
// limit is the decoding of the same JPEG bytes by TurboJPEG, straight into one buffer.
#include "CaptureProcessor.h"
#include "FrameDecoder.h"
#include "FrameDelivery.h"
#include "ImagePool.h"
#include "LargeAllocations.h"
#include "Material.h"
#include "VideoView.h"
#include "mirvakcamera.h"

#include <benchmark/benchmark.h>
#include <turbojpeg.h>

namespace {

void BareJpegDecode(benchmark::State& state)
{
    const tjhandle decoder = tjInitDecompress();
    std::vector<unsigned char> rgb(static_cast<size_t>(frameWidth) * frameHeight * 3);
    size_t next = 0;
    for (auto _ : state) {
        const auto& frame = cameraFrames()[next++ % cameraFrames().size()];
        tjDecompress2(
            decoder, frame.data(), frame.size(), rgb.data(), frameWidth, 0, frameHeight, TJPF_RGB, 0);
        benchmark::DoNotOptimize(rgb.data());
    }
    tjDestroy(decoder);
}

void framePath(benchmark::State& state, int croppingMode)
{
    MirvakCamera camera;
    VideoView view;
    FrameDelivery delivery(camera, [&](const QImage& frame) { view.SetImageData(frame); });
    delivery.setCroppingMode(croppingMode);
    mirvak::ImagePool pool;
    mirvak::FrameDecoder decoder;
    size_t next = 0;
    const auto deliverOne = [&] {
        const auto& bytes = cameraFrames()[next++ % cameraFrames().size()];
        mirvak::RawFrame raw;
        raw.width = frameWidth;
        raw.height = frameHeight;
        raw.data = bytes.data();
        raw.size = bytes.size();
        auto image = pool.take(frameWidth, frameHeight);
        if (!decoder.decode(raw, 1.0, *image))
            state.SkipWithError("a frame was not decoded");
        image->taken = std::chrono::steady_clock::now();
        delivery.onFrame(image.get());
        pool.giveBackShown(std::move(image));
    };
    for (int i = 0; i < 4; ++i)
        deliverOne(); // buffers are made
    const unsigned long before = largeAllocations();
    for (auto _ : state)
        deliverOne();
    state.counters["allocs/frame"] =
        static_cast<double>(largeAllocations() - before) / static_cast<double>(state.iterations());
}

void FramePath(benchmark::State& state)
{
    framePath(state, cropping::none);
}

void FramePathWithOutline(benchmark::State& state)
{
    framePath(state, cropping::deskew);
}

void FramePathWithOutlines(benchmark::State& state)
{
    framePath(state, cropping::second);
}

BENCHMARK(BareJpegDecode)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(FramePath)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(FramePathWithOutline)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(FramePathWithOutlines)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace
