#include "FramePump.h"
#include "FakeCamera.h"
#include "FrameCollector.h"

#include <gmock/gmock.h>

#include <future>

using namespace mirvak;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

namespace {

struct Stream
{
    explicit Stream(const std::deque<FakeCamera::Step>& script, bool endless = false)
        : camera(script, endless)
    {
    }
    MirvakResult start()
    {
        return pump.start(camera.modes().front(), 1, [this](Image* image) { collector.take(image); });
    }
    FakeCamera camera;
    ImagePool pool;
    FrameCollector collector;
    FramePump pump{camera, pool};
};

} // namespace

TEST(FramePump, LeavesDamagedFramesOutAndCountsThem)
{
    Stream stream({FakeCamera::picture(1),
                   FakeCamera::garbage(),
                   {ReadStatus::Damaged, {}, false},
                   {ReadStatus::TimedOut, {}, false},
                   FakeCamera::garbage(),
                   FakeCamera::picture(2)});
    testing::internal::CaptureStderr();
    ASSERT_EQ(stream.start(), MIRVAK_OK);
    ASSERT_TRUE(stream.collector.waitForFrames(2));
    EXPECT_EQ(stream.pump.stop(), MIRVAK_OK);
    const std::string log = testing::internal::GetCapturedStderr();
    EXPECT_THAT(stream.collector.numbers(), ElementsAre(1, 2));
    EXPECT_EQ(stream.pump.damaged(), 3U);
    EXPECT_EQ(stream.pump.delivered(), 2U);
    EXPECT_EQ(std::count(log.begin(), log.end(), '\n'), 1) << "not a line for each frame: " << log;
    EXPECT_FALSE(stream.camera.running);
    ASSERT_EQ(stream.start(), MIRVAK_OK);
    EXPECT_EQ(stream.pump.stop(), MIRVAK_OK);
    EXPECT_EQ(stream.pump.damaged() + stream.pump.delivered(), 0U) << "each stream is counted by itself";
}

TEST(FramePump, TellsOnceThatTheDeviceHasGone)
{
    Stream stream({FakeCamera::picture(1), {ReadStatus::Gone, {}, false}, FakeCamera::picture(2)});
    ASSERT_EQ(stream.start(), MIRVAK_OK);
    ASSERT_TRUE(stream.collector.waitForEnd());
    EXPECT_EQ(stream.start(), MIRVAK_NO_DEVICE);
    EXPECT_EQ(stream.pump.stop(), MIRVAK_OK);
    EXPECT_EQ(stream.start(), MIRVAK_NO_DEVICE);
    EXPECT_EQ(stream.collector.frames(), 1);
    EXPECT_EQ(stream.collector.ends(), 1);
}

TEST(FramePump, StopsAtOnceWhileTheCameraStalls)
{
    Stream stream({FakeCamera::picture(1)});
    ASSERT_EQ(stream.start(), MIRVAK_OK);
    EXPECT_EQ(stream.start(), MIRVAK_BUSY);
    ASSERT_TRUE(stream.collector.waitForFrames(1));
    EXPECT_EQ(stream.pump.stop(), MIRVAK_OK);
    EXPECT_EQ(stream.collector.ends(), 0) << "a stop that was asked for is no end by itself";
    FakeCamera::Step late = FakeCamera::picture(2);
    late.isLate = true;
    Stream ending({FakeCamera::picture(1), late});
    ASSERT_EQ(ending.start(), MIRVAK_OK);
    ASSERT_TRUE(ending.collector.waitForFrames(1));
    EXPECT_EQ(ending.pump.stop(), MIRVAK_OK);
    EXPECT_THAT(ending.collector.numbers(), ElementsAre(1)) << "what comes on the way is nobody's";
}

TEST(FramePump, StopWaitsForTheLastCallAndNoneFollows)
{
    Stream stream({FakeCamera::picture(1)}, true);
    std::promise<void> entered, leave;
    std::atomic<bool> inside{false};
    stream.collector.onFrame = [&, first = true](Image&) mutable {
        if (!std::exchange(first, false))
            return;
        inside = true;
        entered.set_value();
        leave.get_future().wait();
        inside = false;
    };
    ASSERT_EQ(stream.start(), MIRVAK_OK);
    entered.get_future().wait();
    std::thread release([&] { leave.set_value(); });
    EXPECT_EQ(stream.pump.stop(), MIRVAK_OK);
    EXPECT_FALSE(inside);
    const int frames = stream.collector.frames();
    release.join();
    EXPECT_EQ(stream.collector.frames(), frames);
}

TEST(FramePump, StoppingFromTheSinkIsRefused)
{
    Stream stream({FakeCamera::picture(1)}, true);
    std::atomic<int> answer{MIRVAK_OK};
    stream.collector.onFrame = [&](Image&) { answer = stream.pump.stop(); };
    ASSERT_EQ(stream.start(), MIRVAK_OK);
    ASSERT_TRUE(stream.collector.waitForFrames(2));
    EXPECT_EQ(stream.pump.stop(), MIRVAK_OK);
    EXPECT_EQ(answer, MIRVAK_BUSY);
}

TEST(FramePump, GivesTheBufferBackBeforeTheSinkWorks)
{
    Stream stream({FakeCamera::picture(1), FakeCamera::garbage(), FakeCamera::picture(2)});
    std::atomic<int> heldInSink{0};
    stream.collector.onFrame = [&](Image&) { heldInSink += stream.camera.lent ? 1 : 0; };
    ASSERT_EQ(stream.start(), MIRVAK_OK);
    ASSERT_TRUE(stream.collector.waitForFrames(2));
    stream.pump.stop();
    EXPECT_EQ(heldInSink, 0);
}

TEST(FramePump, AnExceptionInTheSinkStaysInside)
{
    Stream stream({FakeCamera::picture(1), FakeCamera::picture(2)});
    stream.collector.onFrame = [first = true](Image&) mutable {
        if (std::exchange(first, false))
            throw std::runtime_error("no room");
    };
    testing::internal::CaptureStderr();
    ASSERT_EQ(stream.start(), MIRVAK_OK);
    EXPECT_TRUE(stream.collector.waitForFrames(1));
    stream.pump.stop();
    EXPECT_THAT(testing::internal::GetCapturedStderr(), HasSubstr("no room"));
    EXPECT_THAT(stream.collector.numbers(), ElementsAre(2));
}
