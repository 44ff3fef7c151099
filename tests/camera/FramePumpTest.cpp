#include "FramePump.h"
#include "FakeCamera.h"
#include "FrameCollector.h"
#include "MatrixCounter.h"
#include "Rotate.h"

#include <gmock/gmock.h>

#include <future>

using namespace mirvak;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

namespace {

MirvakResult startWith(FramePump& pump, const FakeCamera& camera, FrameCollector& collector)
{
    return pump.start(camera.modes().front(), 1, [&](Image* image) { collector.take(image); });
}

} // namespace

TEST(FramePump, LeavesDamagedFramesOutAndCountsThem)
{
    FakeCamera camera({FakeCamera::picture(1),
                       FakeCamera::garbage(),
                       {ReadStatus::Damaged, {}},
                       {ReadStatus::TimedOut, {}},
                       FakeCamera::garbage(),
                       FakeCamera::picture(2)});
    ImagePool pool;
    FrameCollector collector;
    FramePump pump(camera, pool);
    testing::internal::CaptureStderr();
    ASSERT_EQ(startWith(pump, camera, collector), MIRVAK_OK);
    ASSERT_TRUE(collector.waitForFrames(2));
    EXPECT_EQ(pump.stop(), MIRVAK_OK);
    const std::string log = testing::internal::GetCapturedStderr();
    EXPECT_THAT(collector.numbers(), ElementsAre(1, 2));
    EXPECT_EQ(pump.damaged(), 3U);
    EXPECT_EQ(pump.delivered(), 2U);
    EXPECT_EQ(std::count(log.begin(), log.end(), '\n'), 1) << "not a line for each frame: " << log;
    EXPECT_FALSE(camera.running);
}

TEST(FramePump, TellsOnceThatTheDeviceHasGone)
{
    FakeCamera camera({FakeCamera::picture(1), {ReadStatus::Gone, {}}, FakeCamera::picture(2)});
    ImagePool pool;
    FrameCollector collector;
    FramePump pump(camera, pool);
    ASSERT_EQ(startWith(pump, camera, collector), MIRVAK_OK);
    ASSERT_TRUE(collector.waitForEnd());
    EXPECT_EQ(startWith(pump, camera, collector), MIRVAK_NO_DEVICE);
    EXPECT_EQ(pump.stop(), MIRVAK_OK);
    EXPECT_EQ(startWith(pump, camera, collector), MIRVAK_NO_DEVICE);
    EXPECT_EQ(collector.frames(), 1);
    EXPECT_EQ(collector.ends(), 1);
}

TEST(FramePump, StopsAtOnceWhileTheCameraStalls)
{
    FakeCamera camera({FakeCamera::picture(1)});
    ImagePool pool;
    FrameCollector collector;
    FramePump pump(camera, pool);
    ASSERT_EQ(startWith(pump, camera, collector), MIRVAK_OK);
    EXPECT_EQ(startWith(pump, camera, collector), MIRVAK_BUSY);
    ASSERT_TRUE(collector.waitForFrames(1));
    EXPECT_EQ(pump.stop(), MIRVAK_OK);
    EXPECT_EQ(collector.ends(), 0) << "a stop that was asked for is no end by itself";
}

TEST(FramePump, StopWaitsForTheLastCallAndNoneFollows)
{
    FakeCamera camera({FakeCamera::picture(1)}, true);
    ImagePool pool;
    FrameCollector collector;
    std::promise<void> entered, leave;
    std::atomic<bool> inside{false};
    collector.onFrame = [&, first = true](Image&) mutable {
        if (!std::exchange(first, false))
            return;
        inside = true;
        entered.set_value();
        leave.get_future().wait();
        inside = false;
    };
    FramePump pump(camera, pool);
    ASSERT_EQ(startWith(pump, camera, collector), MIRVAK_OK);
    entered.get_future().wait();
    std::thread release([&] { leave.set_value(); });
    EXPECT_EQ(pump.stop(), MIRVAK_OK);
    EXPECT_FALSE(inside);
    const int frames = collector.frames();
    release.join();
    EXPECT_EQ(collector.frames(), frames);
}

TEST(FramePump, StoppingFromTheSinkIsRefused)
{
    FakeCamera camera({FakeCamera::picture(1)}, true);
    ImagePool pool;
    FrameCollector collector;
    FramePump pump(camera, pool);
    std::atomic<int> answer{MIRVAK_OK};
    collector.onFrame = [&](Image&) { answer = pump.stop(); };
    ASSERT_EQ(startWith(pump, camera, collector), MIRVAK_OK);
    ASSERT_TRUE(collector.waitForFrames(2));
    EXPECT_EQ(pump.stop(), MIRVAK_OK);
    EXPECT_EQ(answer, MIRVAK_BUSY);
}

TEST(FramePump, GivesTheBufferBackBeforeTheSinkWorks)
{
    FakeCamera camera({FakeCamera::picture(1), FakeCamera::garbage(), FakeCamera::picture(2)});
    ImagePool pool;
    FrameCollector collector;
    std::atomic<int> heldInSink{0};
    collector.onFrame = [&](Image&) { heldInSink += camera.lent ? 1 : 0; };
    FramePump pump(camera, pool);
    ASSERT_EQ(startWith(pump, camera, collector), MIRVAK_OK);
    ASSERT_TRUE(collector.waitForFrames(2));
    pump.stop();
    EXPECT_EQ(heldInSink, 0);
}

TEST(FramePump, AnExceptionInTheSinkStaysInside)
{
    FakeCamera camera({FakeCamera::picture(1), FakeCamera::picture(2)});
    ImagePool pool;
    FrameCollector collector;
    collector.onFrame = [first = true](Image&) mutable {
        if (std::exchange(first, false))
            throw std::runtime_error("no room");
    };
    FramePump pump(camera, pool);
    testing::internal::CaptureStderr();
    ASSERT_EQ(startWith(pump, camera, collector), MIRVAK_OK);
    EXPECT_TRUE(collector.waitForFrames(1));
    pump.stop();
    EXPECT_THAT(testing::internal::GetCapturedStderr(), HasSubstr("no room"));
    EXPECT_THAT(collector.numbers(), ElementsAre(2));
}

TEST(FramePump, AllocatesNoPixelsAfterTheFirstFramesWhateverTheSinkDoes)
{
    constexpr int warmUp = 5;
    constexpr int frames = 40;
    for (const int quarterTurns : {0, 1, 2, 3}) {
        FakeCamera camera({FakeCamera::picture(3)}, true);
        ImagePool pool;
        FrameCollector collector;
        const MatrixCounter buffers;
        int afterWarmUp = 0;
        int atTheEnd = 0;
        collector.onFrame = [&, frame = 0](Image& image) mutable {
            rotateQuarters(image, quarterTurns);
            ++frame;
            (frame == warmUp ? afterWarmUp : atTheEnd) = buffers.count();
        };
        FramePump pump(camera, pool);
        pump.setShare(0.7);
        ASSERT_EQ(startWith(pump, camera, collector), MIRVAK_OK);
        ASSERT_TRUE(collector.waitForFrames(frames));
        pump.stop();
        const cv::Size turned = quarterTurns % 2 ? cv::Size(FakeCamera::height, FakeCamera::width)
                                                 : cv::Size(FakeCamera::width, FakeCamera::height);
        EXPECT_THAT(collector.sizes(), ::testing::Each(turned));
        EXPECT_GT(afterWarmUp, 0);
        EXPECT_EQ(atTheEnd, afterWarmUp) << quarterTurns << " quarter turns";
    }
}

TEST(FramePump, ThirtyLivesWhileStreaming)
{
    ImagePool pool;
    for (int life = 0; life < 30; ++life) {
        FakeCamera camera({FakeCamera::picture(1), FakeCamera::garbage()}, true);
        FrameCollector collector;
        FramePump pump(camera, pool);
        ASSERT_EQ(startWith(pump, camera, collector), MIRVAK_OK);
        if (life % 3 == 0)
            continue; // destroyed at once
        ASSERT_TRUE(collector.waitForFrames(1));
        if (life % 3 == 1)
            continue; // destroyed while streaming
        pump.stop();
        ASSERT_EQ(startWith(pump, camera, collector), MIRVAK_OK);
        pump.setShare(0.7);
        ASSERT_TRUE(collector.waitForFrames(3));
    }
}
