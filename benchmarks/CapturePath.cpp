// One single shot at 3264x2448 with automatic cropping, from the frame in the channel to the file under its
// name. Its limits are one bilinear perspective warp to the size of the result and one JPEG encoding of the
// result. The files lie in memory, so that the disk's sync does not count; CaptureOnDisk shows what it adds.
#include "CaptureProcessor.h"
#include "Codec.h"
#include "FrameDecoder.h"
#include "FrameHandle.h"
#include "Material.h"
#include "Settings.h"
#include "mirvakcamera.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <opencv2/imgproc.hpp>
#include <turbojpeg.h>

namespace {

constexpr int quality = 95;

mirvak::Image firstFrame()
{
    mirvak::FrameDecoder decoder;
    mirvak::Image image;
    decoder.decodeJpeg(cameraFrames().front().data(), cameraFrames().front().size(), image);
    return image;
}

/// What the capture makes of the frame, measured once outside the clock.
const mirvak::Image& result()
{
    static const mirvak::Image page = [] {
        MirvakCamera camera;
        mirvak::Image frame = firstFrame();
        camera.MirvakImage_Deskew(&frame, 15);
        return frame;
    }();
    return page;
}

void BareWarp(benchmark::State& state)
{
    const mirvak::Image frame = firstFrame();
    const cv::Size size = result().pixels.size();
    const std::vector<cv::Point2f> page = {{400, 60}, {2800, 100}, {2760, 2400}, {380, 2360}};
    const auto width = static_cast<float>(size.width);
    const auto height = static_cast<float>(size.height);
    const std::vector<cv::Point2f> straight = {{0, 0}, {width, 0}, {width, height}, {0, height}};
    const cv::Mat transform = cv::getPerspectiveTransform(page, straight);
    cv::Mat out;
    for (auto _ : state)
        cv::warpPerspective(frame.pixels, out, transform, size, cv::INTER_LINEAR);
}

void BareJpegEncode(benchmark::State& state)
{
    const cv::Mat& pixels = result().pixels;
    const tjhandle encoder = tjInitCompress();
    unsigned char* bytes = nullptr;
    unsigned long size = 0;
    for (auto _ : state) {
        tjCompress2(encoder,
                    pixels.data,
                    pixels.cols,
                    0,
                    pixels.rows,
                    TJPF_RGB,
                    &bytes,
                    &size,
                    TJSAMP_422,
                    quality,
                    0);
    }
    tjFree(bytes);
    tjDestroy(encoder);
}

void capture(benchmark::State& state, const QString& folder)
{
    const QTemporaryDir target(folder + QStringLiteral("/lumro-bench-XXXXXX"));
    ConfigSettings store;
    settings::setSavePath(store, target.path());
    MirvakCamera camera;
    CaptureProcessor processor(camera);
    mirvak::Image frame = firstFrame();
    for (auto _ : state) {
        const FrameHandle taken = ownImage(camera, camera.MirvakImage_Clone(&frame));
        const QString path = processor.imageSave(taken.get(), cropping::deskew, 0);
        if (path.isEmpty())
            state.SkipWithError("nothing was saved");
        state.PauseTiming();
        QFile::remove(path);
        state.ResumeTiming();
    }
}

void CaptureInMemory(benchmark::State& state)
{
    capture(state, QStringLiteral("/dev/shm"));
}

void CaptureOnDisk(benchmark::State& state)
{
    capture(state, QDir::currentPath());
}

BENCHMARK(BareWarp)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BareJpegEncode)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(CaptureInMemory)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(CaptureOnDisk)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace
